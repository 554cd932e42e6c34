#pragma once

#include "actions/nkMetadataActionId.h"

#include <nkKernelServices/nkdObject.h>

#include <QAction>
#include <QList>
#include <QMenu>
#include <QObject>

#include <array>

class nkMetadataActionsHandler;

/// The catalogue of every command that the editor offers: each exists once, as one action, and menus, tool
/// bars and views only place it. Owns its actions, five sub-menus and the handler that carries the commands
/// out; who places an action never deletes it. All enabled and visible until the states are evaluated first.
class nkMetadataActions : public QObject
{
    Q_OBJECT
public:
    /// Builds the catalogue and makes it the one that instance() answers.
    /// @param parent the editor window, which becomes the parent of every action too
    explicit nkMetadataActions(QObject *parent);
    ~nkMetadataActions() override;

    /// The one catalogue; null before construction and after destruction.
    static nkMetadataActions *instance();

    /// The widget given at construction; null where the parent was none.
    QWidget *widget() const { return m_widget; }
    /// Carries out the commands; owned by the catalogue.
    nkMetadataActionsHandler *handler() const { return m_handler; }

    /// Any action by number; null for numbers outside 0..Count-1.
    QAction *action(nkMetadataAction::Id id);
    /// Any sub-menu by number; null for numbers outside 0..MenuCount-1.
    QMenu *menu(nkMetadataAction::Menu menu);

    QAction *renameAction() { return action(nkMetadataAction::Rename); }
    QAction *copyAction() { return action(nkMetadataAction::Copy); }
    QAction *pasteAction() { return action(nkMetadataAction::Paste); }
    QAction *duplicateAction() { return action(nkMetadataAction::Duplicate); }
    QAction *deleteAction() { return action(nkMetadataAction::Delete); }
    QAction *lockAction() { return action(nkMetadataAction::Lock); }
    QAction *unlockAction() { return action(nkMetadataAction::Unlock); }
    QAction *removeSelectedAssignmentsAction() { return action(nkMetadataAction::RemoveSelectedAssignments); }
    QAction *removeAllAssignmentsAction() { return action(nkMetadataAction::RemoveAllAssignments); }
    QAction *deleteAllEntriesAction() { return action(nkMetadataAction::DeleteAllEntries); }
    QAction *deleteUnassignedSetsAction() { return action(nkMetadataAction::DeleteUnassignedSets); }
    QAction *createSetAction() { return action(nkMetadataAction::CreateSet); }
    QAction *selectAllEditorsAction() { return action(nkMetadataAction::SelectAllEditors); }
    QAction *selectInScenegraphAction() { return action(nkMetadataAction::SelectInScenegraph); }
    QAction *selectInMaterialEditorAction() { return action(nkMetadataAction::SelectInMaterialEditor); }
    QAction *selectInCameraEditorAction() { return action(nkMetadataAction::SelectInCameraEditor); }
    QAction *selectInLightEditorAction() { return action(nkMetadataAction::SelectInLightEditor); }
    QAction *selectInSceneplateEditorAction() { return action(nkMetadataAction::SelectInSceneplateEditor); }
    QAction *focusModeAction() { return action(nkMetadataAction::FocusMode); }
    QAction *selectAllAction() { return action(nkMetadataAction::SelectAll); }
    QAction *deselectAllAction() { return action(nkMetadataAction::DeselectAll); }
    QAction *invertSelectionAction() { return action(nkMetadataAction::InvertSelection); }
    QAction *modifyAssetAction() { return action(nkMetadataAction::ModifyAsset); }
    QAction *saveInAssetManagerAction() { return action(nkMetadataAction::SaveInAssetManager); }
    QAction *findInAssetManagerAction() { return action(nkMetadataAction::FindInAssetManager); }
    QAction *reloadFromAssetManagerAction() { return action(nkMetadataAction::ReloadFromAssetManager); }
    QAction *removeAssetLinkAction() { return action(nkMetadataAction::RemoveAssetLink); }
    QAction *assignToLastSelectionAction() { return action(nkMetadataAction::AssignToLastSelection); }
    QAction *assignToNodesAction() { return action(nkMetadataAction::AssignToNodes); }
    QAction *assignToMaterialsAction() { return action(nkMetadataAction::AssignToMaterials); }
    QAction *assignToCamerasAction() { return action(nkMetadataAction::AssignToCameras); }
    QAction *assignToLightsAction() { return action(nkMetadataAction::AssignToLights); }
    QAction *assignToSceneplatesAction() { return action(nkMetadataAction::AssignToSceneplates); }
    QAction *loadMetadataAction() { return action(nkMetadataAction::LoadMetadata); }
    QAction *saveMetadataAction() { return action(nkMetadataAction::SaveMetadata); }
    QAction *separatorAction() { return action(nkMetadataAction::Separator); }
    QAction *createStringEntryAction() { return action(nkMetadataAction::CreateStringEntry); }
    QAction *createIntegerEntryAction() { return action(nkMetadataAction::CreateIntegerEntry); }
    QAction *createFloatEntryAction() { return action(nkMetadataAction::CreateFloatEntry); }
    QAction *createBooleanEntryAction() { return action(nkMetadataAction::CreateBooleanEntry); }
    QAction *createTimeEntryAction() { return action(nkMetadataAction::CreateTimeEntry); }
    QAction *createDateEntryAction() { return action(nkMetadataAction::CreateDateEntry); }
    QAction *createDateTimeEntryAction() { return action(nkMetadataAction::CreateDateTimeEntry); }
    QAction *createListEntryAction() { return action(nkMetadataAction::CreateListEntry); }
    QAction *createTagEntryAction() { return action(nkMetadataAction::CreateTagEntry); }
    QAction *moveSetEntriesToObjectAction() { return action(nkMetadataAction::MoveSetEntriesToObject); }
    QAction *createSetFromObjectEntriesAction()
    {
        return action(nkMetadataAction::CreateSetFromObjectEntries);
    }

    QMenu *assignMenu() { return menu(nkMetadataAction::AssignMenu); }
    QMenu *createEntryMenu() { return menu(nkMetadataAction::CreateEntryMenu); }
    QMenu *selectObjectsMenu() { return menu(nkMetadataAction::SelectObjectsMenu); }
    QMenu *editMenu() { return menu(nkMetadataAction::EditMenu); }
    QMenu *assetMenu() { return menu(nkMetadataAction::AssetMenu); }

    /// Enables "Create Entry" where the selection holds editable sets or editable nodes that can carry
    /// metadata, but not both.
    void updateCreateEntryMenu(const QList<nkdObject> &selection);

private:
    void createActions();
    void createFocusMode();
    void createMenus();

    QWidget *const m_widget;
    nkMetadataActionsHandler *m_handler = nullptr;
    std::array<QAction, nkMetadataAction::Count> m_actions;
    /// Behind the actions, so that they are gone before what they show.
    std::array<QMenu, nkMetadataAction::MenuCount> m_menus;
};
