#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QSignalSpy>

class TestModuleSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void starts_with_the_scene_graph() { QCOMPARE(selection().getLastSelectionModule(), 0); }

    void answers_the_present_selection_of_the_last_editor()
    {
        const GuiScene scene = GuiScene::load();
        nkScenegraphService::the().setSelection({node(scene.plain), node(scene.root)});
        nkMaterialService::the().setSelection(
            {nkdMaterialGroupNode(nkdObject(scene.paints)), nkdMaterial(nkdObject(scene.blue))}, false,
            false);
        nkLightService::the().setSelection({node(scene.lamp)});
        nkCameraService::the().setSelection({node(scene.camera)});
        nkSceneplateService::the().setSelection({node(scene.plate)});
        QCOMPARE(lastSelection(0), (QList<quint64>{scene.plain, scene.root}));
        QCOMPARE(lastSelection(1), (QList<quint64>{scene.paints, scene.blue}));
        QCOMPARE(lastSelection(2), QList<quint64>{scene.lamp});
        QCOMPARE(lastSelection(3), QList<quint64>{scene.camera});
        QCOMPARE(lastSelection(4), QList<quint64>{scene.plate});
    }

    void a_selection_by_program_does_not_move_it()
    {
        const GuiScene scene = GuiScene::load();
        selection().setLastSelectionModule(2);
        nkCameraService::the().setSelection({node(scene.camera)});
        QCOMPARE(selection().getLastSelectionModule(), 2);
    }

    void every_gesture_is_told_and_unknown_editors_are_ignored()
    {
        selection().setLastSelectionModule(1);
        QSignalSpy told(&selection(), &nkMetadataModuleSelection::lastSelectionModuleChanged);
        selection().setLastSelectionModule(1);
        selection().setLastSelectionModule(4);
        selection().setLastSelectionModule(5);
        selection().setLastSelectionModule(-1);
        QCOMPARE(told.count(), 2);
        QCOMPARE(told.last().first().toInt(), 4);
        QCOMPARE(selection().getLastSelectionModule(), 4);
    }

private:
    static nkMetadataModuleSelection &selection() { return nkMetadataModuleSelection::the(); }
    static nkdNode node(quint64 id) { return nkdNode(nkdObject(id)); }

    static QList<quint64> lastSelection(int module)
    {
        selection().setLastSelectionModule(module);
        QList<quint64> ids;
        for (const nkdObject &object : selection().getLastSelection()) {
            ids.append(object.getObjectId());
        }
        return ids;
    }
};

NK_TEST_MAIN(TestModuleSelection)
#include "test_module_selection.moc"
