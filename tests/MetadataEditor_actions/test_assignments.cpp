#include "ActionsFixture.h"

#include <TestMain.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

/// Assigning sets to what is selected in the editors, selecting there what sets are assigned to, and the
/// commands that are passed on to the trees.
class TestAssignments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        m_fixture->show();
        nkScenegraphService::the().setSelection({f().chair, f().table});
        nkMaterialService::the().setSelection({f().paint, f().group}, false, false);
        nkCameraService::the().setSelection({f().cam});
        nkLightService::the().setSelection({f().lamp});
        nkSceneplateService::the().setSelection({f().plate});
        nkMetadataModuleSelection::the().setLastSelectionModule(0);
    }
    void cleanup()
    {
        m_fixture.reset();
        clearEditors();
    }

    void assigns_to_the_selection_of_an_editor_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("carriers");
        QTest::newRow("nodes") << int(nkMetadataAction::AssignToNodes) << QStringLiteral("Chair Table");
        QTest::newRow("materials") << int(nkMetadataAction::AssignToMaterials)
                                   << QStringLiteral("Paint Group");
        QTest::newRow("cameras") << int(nkMetadataAction::AssignToCameras) << QStringLiteral("Cam");
        QTest::newRow("lights") << int(nkMetadataAction::AssignToLights) << QStringLiteral("Lamp");
        QTest::newRow("sceneplates") << int(nkMetadataAction::AssignToSceneplates) << QStringLiteral("Plate");
    }
    void assigns_to_the_selection_of_an_editor()
    {
        QFETCH(int, action);
        QFETCH(QString, carriers);
        f().select({f().gamma});
        f().triggerOneStep(a().action(nkMetadataAction::Id(action)),
                           QStringLiteral("Add Sets to Last Selected Objects"));
        QCOMPARE(f().carriers(f().gamma).join(QLatin1Char(' ')), carriers);
    }

    void assigns_every_selected_set()
    {
        f().select({f().gamma, f().table, f().beta});
        f().triggerOneStep(a().assignToLightsAction());
        QCOMPARE(f().names(nkdMetadata::fromObject(f().lamp).getSets()),
                 QStringList({QStringLiteral("Gamma"), QStringLiteral("Beta")}));
        QVERIFY(nkdMetadata::fromObject(f().table).getSets().isEmpty());
    }

    void assigns_to_the_editor_of_the_last_gesture_data()
    {
        QTest::addColumn<int>("module");
        QTest::addColumn<QString>("carriers");
        QTest::newRow("scene graph") << 0 << QStringLiteral("Chair Table");
        QTest::newRow("materials") << 1 << QStringLiteral("Paint Group");
        QTest::newRow("lights") << 2 << QStringLiteral("Lamp");
        QTest::newRow("cameras") << 3 << QStringLiteral("Cam");
        QTest::newRow("sceneplates") << 4 << QStringLiteral("Plate");
    }
    void assigns_to_the_editor_of_the_last_gesture()
    {
        QFETCH(int, module);
        QFETCH(QString, carriers);
        nkMetadataModuleSelection::the().setLastSelectionModule(module);
        f().select({f().gamma});
        f().triggerOneStep(a().assignToLastSelectionAction(),
                           QStringLiteral("Add Sets to Last Selected Objects"));
        QCOMPARE(f().carriers(f().gamma).join(QLatin1Char(' ')), carriers);
    }

    void assigns_nothing_without_sets_or_objects()
    {
        f().select({f().chair});
        f().triggerNothing(a().assignToNodesAction());
        nkCameraService::the().setSelection({});
        f().select({f().alpha});
        f().triggerNothing(a().assignToCamerasAction());
        // Assigned already.
        nkCameraService::the().setSelection({f().cam});
        f().triggerNothing(a().assignToCamerasAction());
    }

    void selects_in_all_editors()
    {
        QSignalSpy scrolls(&nkScenegraphService::the(), &nkScenegraphService::scrollToSelectedRequested);
        QSignalSpy materials(&nkMaterialService::the(), &nkMaterialService::selectionChanged);
        const int steps = f().stack()->count();
        f().select({f().alpha});
        a().selectAllEditorsAction()->trigger();
        // A camera is a node of the scene graph too.
        QCOMPARE(names(nkScenegraphService::the().getSelectedNodes()), QStringLiteral("Chair Cam"));
        QCOMPARE(names(nkCameraService::the().getSelectedCameras()), QStringLiteral("Cam"));
        QCOMPARE(nkMaterialService::the().getSelectedMaterials(), QList<nkMaterialEntryId>{f().paint});
        QVERIFY(nkLightService::the().getSelectedLights().isEmpty());
        QVERIFY(nkSceneplateService::the().getSelectedSceneplates().isEmpty());
        QCOMPARE(scrolls.size(), 1);
        QCOMPARE(materials.size(), 1);
        QCOMPARE(materials.first().at(1).toBool(), true);
        QCOMPARE(materials.first().at(2).toBool(), false);
        QCOMPARE(f().stack()->count(), steps);
        QCOMPARE(nkMetadataModuleSelection::the().getLastSelectionModule(), 0);
    }

    void selects_in_one_editor_and_leaves_the_others()
    {
        f().select({f().alpha, f().lamp, f().plate, f().group, f().chair});
        a().selectInLightEditorAction()->trigger();
        QCOMPARE(names(nkLightService::the().getSelectedLights()), QStringLiteral("Lamp"));
        QCOMPARE(names(nkScenegraphService::the().getSelectedNodes()), QStringLiteral("Chair Table"));
        a().selectInSceneplateEditorAction()->trigger();
        QCOMPARE(names(nkSceneplateService::the().getSelectedSceneplates()), QStringLiteral("Plate"));
        a().selectInCameraEditorAction()->trigger();
        QCOMPARE(names(nkCameraService::the().getSelectedCameras()), QStringLiteral("Cam"));
        a().selectInMaterialEditorAction()->trigger();
        QCOMPARE(nkMaterialService::the().getSelectedMaterials(),
                 QList<nkMaterialEntryId>({f().paint, f().group}));
        QCOMPARE(names(nkScenegraphService::the().getSelectedNodes()), QStringLiteral("Chair Table"));
        a().selectInScenegraphAction()->trigger();
        QCOMPARE(names(nkScenegraphService::the().getSelectedNodes()),
                 QStringLiteral("Chair Cam Lamp Plate"));
    }

    void an_editor_without_objects_is_told_so()
    {
        f().select({f().table});
        a().selectInCameraEditorAction()->trigger();
        QVERIFY(nkCameraService::the().getSelectedCameras().isEmpty());
    }

    void passes_tree_commands_on()
    {
        using Handler = nkMetadataActionsHandler;
        f().elsewhere->setFocus();
        QSignalSpy removeSelected(f().handler(), &Handler::removeSelectedAssignments);
        QSignalSpy removeAll(f().handler(), &Handler::removeAllAssignments);
        QSignalSpy selectAll(f().handler(), &Handler::selectAll);
        QSignalSpy deselectAll(f().handler(), &Handler::deselectAll);
        QSignalSpy invert(f().handler(), &Handler::invertSelection);
        f().triggerNothing(a().removeSelectedAssignmentsAction());
        QCOMPARE(removeSelected.size(), 1);
        f().triggerNothing(a().removeAllAssignmentsAction());
        QCOMPARE(removeAll.size(), 1);
        f().triggerNothing(a().selectAllAction());
        QCOMPARE(selectAll.size(), 1);
        f().triggerNothing(a().deselectAllAction());
        QCOMPARE(deselectAll.size(), 1);
        f().triggerNothing(a().invertSelectionAction());
        QCOMPARE(invert.size(), 1);
    }

    void tells_the_focus_mode()
    {
        QSignalSpy focus(f().handler(), &nkMetadataActionsHandler::graphFocusedAction);
        a().focusModeAction()->trigger();
        a().focusModeAction()->setChecked(false);
        QCOMPARE(focus.size(), 2);
        QCOMPARE(focus.at(0).first().toBool(), true);
        QCOMPARE(focus.at(1).first().toBool(), false);
    }

private:
    static void clearEditors()
    {
        nkScenegraphService::the().setSelection({});
        nkMaterialService::the().setSelection({}, false, false);
        nkCameraService::the().setSelection({});
        nkLightService::the().setSelection({});
        nkSceneplateService::the().setSelection({});
    }

    static QString names(const QList<nkdNode> &nodes)
    {
        QStringList names;
        for (const nkdNode &node : nodes) {
            names.append(node.getName());
        }
        return names.join(QLatin1Char(' '));
    }

    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestAssignments)
#include "test_assignments.moc"
