#include "ActionsFixture.h"

#include "actions/nkMetadataActionInputs.h"
#include "actions/nkMetadataFocusedTree.h"

#include <TestMain.h>
#include <kernel/document/AssetState.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>

#include <QLineEdit>

/// The states of the actions, from the scene and the selection to what is enabled.
class TestStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        m_fixture->show();
    }
    void cleanup()
    {
        m_fixture.reset();
        nkScenegraphService::the().setSelection({});
        nkMaterialService::the().setSelection({}, false, false);
        nkCameraService::the().setSelection({});
        nkLightService::the().setSelection({});
        nkSceneplateService::the().setSelection({});
    }

    void an_empty_selection_leaves_little()
    {
        f().select({f().alpha});
        f().select({});
        const nkMetadataActionInputs inputs = nkMetadataActionInputs::gather(true);
        QCOMPARE(inputs.selectionSize, 0);
        QVERIFY(inputs.setsExist);
        for (QAction *action :
             {a().renameAction(), a().copyAction(), a().duplicateAction(), a().deleteAction(),
              a().lockAction(), a().unlockAction(), a().deleteAllEntriesAction(),
              a().selectAllEditorsAction(), a().deselectAllAction(), a().invertSelectionAction()}) {
            QVERIFY2(!action->isEnabled(), qPrintable(action->text()));
        }
        QVERIFY(!a().selectObjectsMenu()->isEnabled());
        QVERIFY(!a().assetMenu()->isEnabled());
        QVERIFY(!a().createEntryMenu()->isEnabled());
        QVERIFY(a().focusModeAction()->isEnabled());
        QVERIFY(a().loadMetadataAction()->isEnabled());
        QVERIFY(a().selectAllAction()->isEnabled());
    }

    void a_scene_without_sets_has_none_to_select()
    {
        SceneFixture::reset();
        f().handler()->updateActionStates();
        QVERIFY(!a().selectAllAction()->isEnabled());
    }

    void two_sets_locked_and_unlocked_can_be_both()
    {
        f().beta.setLocked(true);
        f().select({f().alpha, f().beta});
        QVERIFY(a().lockAction()->isEnabled());
        QVERIFY(a().unlockAction()->isEnabled());
        QVERIFY(!a().renameAction()->isEnabled());
        QVERIFY(a().deleteAction()->isEnabled());
        f().select({f().alpha});
        QVERIFY(a().renameAction()->isEnabled());
        f().select({f().beta});
        QVERIFY(!a().renameAction()->isEnabled());
    }

    void an_object_beside_one_set_does_not_hinder_renaming()
    {
        f().select({f().chair, f().alpha});
        QVERIFY(a().renameAction()->isEnabled());
    }

    void a_camera_enables_every_editor()
    {
        f().select({f().cam});
        for (QAction *action : {a().selectInScenegraphAction(), a().selectInMaterialEditorAction(),
                                a().selectInCameraEditorAction(), a().selectInLightEditorAction(),
                                a().selectInSceneplateEditorAction()}) {
            QVERIFY2(action->isEnabled(), qPrintable(action->text()));
        }
        f().select({f().paint});
        QVERIFY(a().selectInMaterialEditorAction()->isEnabled());
        QVERIFY(!a().selectInScenegraphAction()->isEnabled());
        QVERIFY(!a().selectInCameraEditorAction()->isEnabled());
    }

    void a_set_stands_for_the_kinds_it_is_assigned_to()
    {
        nkdMetadataSet onPaint = nkMetadataService::the().createSet(QStringLiteral("OnPaint"), {f().paint});
        f().select({onPaint});
        QVERIFY(a().selectInMaterialEditorAction()->isEnabled());
        QVERIFY(!a().selectInScenegraphAction()->isEnabled());
        // The kinds of a set's objects do not make them selected.
        QVERIFY(!nkMetadataActionInputs::gather(true).metadataObjectSelected);
        f().select({f().gamma});
        QVERIFY(!a().selectInMaterialEditorAction()->isEnabled());
        QVERIFY(a().selectAllEditorsAction()->isEnabled());
    }

    void a_set_of_the_same_kind_does_not_hide_a_selected_object()
    {
        f().select({f().alpha, f().chair});
        QVERIFY(nkMetadataActionInputs::gather(true).metadataObjectSelected);
    }

    void an_object_set_counts_as_any_set_and_no_more()
    {
        const nkdMetadataSet own = f().ownSet(f().chair);
        f().select({own});
        const nkMetadataActionInputs inputs = nkMetadataActionInputs::gather(true);
        QVERIFY(inputs.anySetSelected);
        QCOMPARE(inputs.setsSelected, 0);
        QVERIFY(!inputs.unlockedSetSelected && !inputs.lockedSetSelected);
        QVERIFY(inputs.setWithEntriesSelected);
        QVERIFY(!a().copyAction()->isEnabled());
        QVERIFY(a().assignMenu()->isEnabled());
        QVERIFY(a().deleteAllEntriesAction()->isEnabled());
    }

    void late_members_of_a_long_selection_still_count()
    {
        f().gamma.setLocked(true);
        kernel::Document::the().setAssetState(f().beta.getObjectId(), kernel::AssetState::Edited);
        f().select({f().paint, f().alpha, f().beta, f().gamma});
        const nkMetadataActionInputs inputs = nkMetadataActionInputs::gather(false);
        QCOMPARE(inputs.selectionSize, 4);
        QCOMPARE(inputs.setsSelected, 2);
        QVERIFY(inputs.lockedSetSelected && inputs.unlockedSetSelected);
        QVERIFY(inputs.assetSelected && inputs.editedAssetSelected && !inputs.uneditedAssetSelected);
        QVERIFY(inputs.hasKind(nkObjectType::Material) && inputs.hasKind(nkObjectType::Camera));
        QVERIFY(inputs.hasNode() && inputs.metadataObjectSelected);
        QVERIFY(!inputs.hasKind(nkObjectType::Light));
    }

    void object_sets_hide_no_lock_of_a_later_set()
    {
        nkdMetadataSet own = f().ownSet(f().chair);
        own.setLocked(true);
        f().select({f().alpha, f().gamma, own});
        QVERIFY(!nkMetadataActionInputs::gather(true).lockedSetSelected);
        f().beta.setLocked(true);
        f().select({f().alpha, f().gamma, own, f().beta});
        QVERIFY(nkMetadataActionInputs::gather(true).lockedSetSelected);
    }

    void empty_sets_have_no_entries_to_delete()
    {
        f().select({f().gamma});
        QVERIFY(!a().deleteAllEntriesAction()->isEnabled());
        f().select({f().gamma, f().alpha});
        QVERIFY(a().deleteAllEntriesAction()->isEnabled());
    }

    void assets_at_rest_and_edited()
    {
        kernel::Document::the().setAssetState(f().alpha.getObjectId(), kernel::AssetState::AtRest);
        f().select({f().alpha});
        QVERIFY(a().assetMenu()->isEnabled());
        QVERIFY(a().modifyAssetAction()->isEnabled());
        QVERIFY(!a().saveInAssetManagerAction()->isEnabled());
        kernel::Document::the().setAssetState(f().alpha.getObjectId(), kernel::AssetState::Edited);
        f().handler()->updateActionStates();
        QVERIFY(!a().modifyAssetAction()->isEnabled());
        QVERIFY(a().saveInAssetManagerAction()->isEnabled());
    }

    void each_editor_enables_assigning_to_it()
    {
        const auto expect = [this](QAction *enabled) {
            f().select({f().alpha});
            for (QAction *action :
                 {a().assignToNodesAction(), a().assignToMaterialsAction(), a().assignToCamerasAction(),
                  a().assignToLightsAction(), a().assignToSceneplatesAction()}) {
                QCOMPARE(action->isEnabled(), action == enabled);
            }
            QCOMPARE(a().assignToLastSelectionAction()->isEnabled(), enabled != nullptr);
        };
        expect(nullptr);
        nkScenegraphService::the().setSelection({f().chair});
        expect(a().assignToNodesAction());
        nkScenegraphService::the().setSelection({});
        nkMaterialService::the().setSelection({f().paint}, false, false);
        expect(a().assignToMaterialsAction());
        nkMaterialService::the().setSelection({}, false, false);
        nkCameraService::the().setSelection({f().cam});
        expect(a().assignToCamerasAction());
        nkCameraService::the().setSelection({});
        nkLightService::the().setSelection({f().lamp});
        expect(a().assignToLightsAction());
        nkLightService::the().setSelection({});
        nkSceneplateService::the().setSelection({f().plate});
        expect(a().assignToSceneplatesAction());
    }

    void sets_mode_follows_the_focus()
    {
        const auto isSetsMode = [this] { return nkMetadataFocusedTree::isSetsMode(&f().window); };
        QVERIFY(isSetsMode());
        f().lower->getTreeView()->setFocus();
        QVERIFY(!isSetsMode());
        f().lower->setMode(TreeMode::Sets);
        QVERIFY(isSetsMode());
        f().upper->setMode(TreeMode::Materials);
        f().upper->getTreeView()->setFocus();
        QVERIFY(!isSetsMode());
        f().elsewhere->setFocus();
        QVERIFY(!isSetsMode());
        QVERIFY(!nkMetadataFocusedTree::isSetsMode(nullptr));
    }

    void sets_mode_is_not_another_windows()
    {
        QWidget stranger;
        QVERIFY(!nkMetadataFocusedTree::isSetsMode(&stranger));
    }

    void an_open_menu_leaves_the_focus_to_the_tree()
    {
        f().select({f().alpha});
        a().editMenu()->popup(f().window.mapToGlobal(QPoint(5, 5)));
        QVERIFY(nkMetadataFocusedTree::isSetsMode(&f().window));
        f().handler()->updateActionStates();
        QVERIFY(a().deleteAction()->isEnabled());
        a().editMenu()->close();
    }

    void create_entry_wants_sets_or_objects_but_not_both()
    {
        const auto enabledFor = [this](const QList<nkdObject> &objects) {
            f().select(objects);
            return a().createEntryMenu()->isEnabled();
        };
        QVERIFY(enabledFor({f().alpha}));
        QVERIFY(enabledFor({f().alpha, f().beta}));
        QVERIFY(enabledFor({f().chair}));
        QVERIFY(!enabledFor({f().alpha, f().chair}));
        QVERIFY(!enabledFor({}));
        // Materials are no nodes.
        QVERIFY(!enabledFor({f().paint}));
        QVERIFY(enabledFor({f().alpha, f().paint}));
        f().alpha.setLocked(true);
        QVERIFY(!enabledFor({f().alpha}));
        QVERIFY(enabledFor({f().alpha, f().chair}));
        QVERIFY(enabledFor({f().alpha, f().beta}));
        f().table.setLocked(true);
        QVERIFY(!enabledFor({f().table}));
    }

    void create_entry_follows_a_lock_at_once()
    {
        f().select({f().alpha});
        QVERIFY(a().createEntryMenu()->isEnabled());
        a().lockAction()->trigger();
        QVERIFY(!a().createEntryMenu()->isEnabled());
        a().unlockAction()->trigger();
        QVERIFY(a().createEntryMenu()->isEnabled());
    }

    void entry_types_keep_their_state()
    {
        a().createTagEntryAction()->setEnabled(false);
        f().select({f().alpha});
        QVERIFY(!a().createTagEntryAction()->isEnabled());
        QVERIFY(a().createStringEntryAction()->isEnabled());
    }

    void entry_moves_never_show()
    {
        QVERIFY(a().moveSetEntriesToObjectAction()->isVisible());
        f().select({f().alpha, f().chair});
        QVERIFY(!a().moveSetEntriesToObjectAction()->isVisible());
        QVERIFY(!a().createSetFromObjectEntriesAction()->isVisible());
        a().moveSetEntriesToObjectAction()->setVisible(true);
        f().handler()->updateActionStates();
        QVERIFY(!a().moveSetEntriesToObjectAction()->isVisible());
    }

private:
    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestStates)
#include "test_states.moc"
