#include "actions/nkMetadataActionsHandler.h"

#include "actions/nkMetadataActionInputs.h"
#include "actions/nkMetadataActionRules.h"
#include "actions/nkMetadataActionSelection.h"
#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataEditorKind.h"
#include "actions/nkMetadataEntryMoves.h"
#include "actions/nkMetadataFocusedTree.h"
#include "actions/nkMetadataReferencedObjects.h"
#include "frame/nkMetadataEditorModule.h"
#include "frame/nkMetadataEditorUpdater.h"

#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QFileDialog>

using namespace nkMetadataAction;
namespace Selection = nkMetadataActionSelection;
using Handler = nkMetadataActionsHandler;

namespace {

/// The title of an undo step of the editor. Made on the heap: the host keeps it.
nkUndoString undoTitle(const QString &title)
{
    return nkUndoString(title, QString::fromLatin1("Metadata Editor"), QString());
}

/// The set that a new entry goes into; null where the selection is not exactly one member that takes it.
nkdMetadataSet setForNewEntry()
{
    const nkMetadataService &metadata = nkMetadataService::the();
    const QList<nkdObject> selection = metadata.getSelection();
    if (selection.size() != 1) {
        return nkdMetadataSet();
    }
    const nkdMetadataSet set(selection.first());
    const nkdSceneObject object(selection.first());
    if (!set.isNull() || !metadata.canHaveMetadata(object)) {
        return set;
    }
    return nkdMetadata::fromObject(object).getObjectSet();
}

/// Keeps the refreshes of the editor window away that the host's announcements would ask for meanwhile.
class RefreshBlocker
{
    Q_DISABLE_COPY(RefreshBlocker)
public:
    RefreshBlocker() { block(true); }
    ~RefreshBlocker() { block(false); }

private:
    static void block(bool on)
    {
        const nkMetadataEditorModule *window = nkMetadataEditorModule::instance();
        if (window && window->updater()) {
            window->updater()->blockRequests(on);
        }
    }
};

} // namespace

nkMetadataActionsHandler::nkMetadataActionsHandler(nkMetadataActions *actions)
    : QObject(actions), m_actions(actions)
{
    connectActions();
    connectEntryTypes();
    connectEditors();
    connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, this, &Handler::evaluateRules);
}

nkMetadataActionsHandler::~nkMetadataActionsHandler() = default;

void nkMetadataActionsHandler::connectActions()
{
    struct Wire
    {
        Id action;
        void (Handler::*operation)();
    };
    static const Wire wires[]{
        {Rename, &Handler::renameSet},
        {Copy, &Handler::copySets},
        {Paste, &Handler::pasteSets},
        {Duplicate, &Handler::duplicateSets},
        {Delete, &Handler::deleteSets},
        {Lock, &Handler::lockSets},
        {Unlock, &Handler::unlockSets},
        {RemoveSelectedAssignments, &Handler::removeSelectedAssignments},
        {RemoveAllAssignments, &Handler::removeAllAssignments},
        {DeleteAllEntries, &Handler::deleteAllEntries},
        {DeleteUnassignedSets, &Handler::deleteUnassignedSets},
        {CreateSet, &Handler::createSet},
        {SelectAll, &Handler::selectAll},
        {DeselectAll, &Handler::deselectAll},
        {InvertSelection, &Handler::invertSelection},
        {ModifyAsset, &Handler::modifyAssets},
        {SaveInAssetManager, &Handler::saveAssets},
        {FindInAssetManager, &Handler::findAssets},
        {ReloadFromAssetManager, &Handler::reloadAssets},
        {RemoveAssetLink, &Handler::removeAssetLinks},
        {AssignToLastSelection, &Handler::assignSetsToLastSelection},
        {LoadMetadata, &Handler::loadSets},
        {SaveMetadata, &Handler::saveSets},
        {MoveSetEntriesToObject, &Handler::moveSetEntriesToObject},
        {CreateSetFromObjectEntries, &Handler::createSetFromObjectEntries},
    };
    for (const Wire &wire : wires) {
        connect(m_actions->action(wire.action), &QAction::triggered, this, wire.operation);
    }
    connect(m_actions->focusModeAction(), &QAction::toggled, this, &Handler::graphFocusedAction);
}

void nkMetadataActionsHandler::connectEntryTypes()
{
    // The actions stand in the order of the types.
    for (int type = nkMetadataTypes::String; type <= nkMetadataTypes::Tag; ++type) {
        connect(m_actions->action(Id(CreateStringEntry + type)), &QAction::triggered, this,
                [this, type] { createEntry(nkMetadataTypes::ValueType(type)); });
    }
}

void nkMetadataActionsHandler::connectEditors()
{
    using namespace nkMetadataEditorKind;
    struct Wire
    {
        Id action;
        void (Handler::*operation)(int);
        int kind;
    };
    static const Wire wires[]{
        {AssignToNodes, &Handler::assignSets, Scenegraph},
        {AssignToMaterials, &Handler::assignSets, MaterialEditor},
        {AssignToCameras, &Handler::assignSets, CameraEditor},
        {AssignToLights, &Handler::assignSets, LightEditor},
        {AssignToSceneplates, &Handler::assignSets, SceneplateEditor},
        {SelectAllEditors, &Handler::selectObjects, AllEditors},
        {SelectInScenegraph, &Handler::selectObjects, Scenegraph},
        {SelectInMaterialEditor, &Handler::selectObjects, MaterialEditor},
        {SelectInCameraEditor, &Handler::selectObjects, CameraEditor},
        {SelectInLightEditor, &Handler::selectObjects, LightEditor},
        {SelectInSceneplateEditor, &Handler::selectObjects, SceneplateEditor},
    };
    for (const Wire &wire : wires) {
        connect(m_actions->action(wire.action), &QAction::triggered, this,
                [this, wire] { (this->*wire.operation)(wire.kind); });
    }
}

// States ------------------------------------------------------------------------------------------------

void nkMetadataActionsHandler::updateActionStates()
{
    evaluateRules();
    m_actions->updateCreateEntryMenu(nkMetadataService::the().getSelection());
}

void nkMetadataActionsHandler::evaluateRules()
{
    apply(nkMetadataActionInputs::gather(isSetsMode()));
}

void nkMetadataActionsHandler::apply(const nkMetadataActionInputs &inputs)
{
    for (const nkMetadataActionRules::ActionRule &rule : nkMetadataActionRules::actionRules()) {
        m_actions->action(rule.id)->setEnabled(rule.isEnabled(inputs));
    }
    for (const nkMetadataActionRules::MenuRule &rule : nkMetadataActionRules::menuRules()) {
        m_actions->menu(rule.menu)->setEnabled(rule.isEnabled(inputs));
    }
    m_actions->moveSetEntriesToObjectAction()->setVisible(false);
    m_actions->createSetFromObjectEntriesAction()->setVisible(false);
}

bool nkMetadataActionsHandler::isSetsMode() const
{
    return nkMetadataFocusedTree::isSetsMode(m_actions->widget());
}

// Sets --------------------------------------------------------------------------------------------------

void nkMetadataActionsHandler::createSet()
{
    const QList<nkdSceneObject> objects = Selection::objects();
    nkdMetadataSet set;
    {
        const nkScopedUndo undo(true);
        const nkScopedMultiCommand command(nkUndoString(tr("Create Metadata Set")), true);
        nkMetadataService &metadata = nkMetadataService::the();
        set = metadata.createSet(metadata.getUniqueSetName(tr("MetadataSet")), objects);
    }
    Q_EMIT setCreated(set, objects.isEmpty() ? nkdSceneObject() : objects.last());
}

void nkMetadataActionsHandler::copySets()
{
    nkMetadataService::the().copySets(Selection::sets());
    updateActionStates();
}

void nkMetadataActionsHandler::pasteSets()
{
    const nkScopedUndo undo(true);
    nkMetadataService::the().pasteSets(Selection::objects());
}

void nkMetadataActionsHandler::duplicateSets()
{
    const nkScopedUndo undo(true);
    nkMetadataService::the().duplicateSets(Selection::sets());
}

void nkMetadataActionsHandler::deleteSets()
{
    if (isSetsMode()) {
        const nkScopedUndo undo(true);
        nkMetadataService::the().deleteSets(Selection::sets());
    }
}

void nkMetadataActionsHandler::lockSets()
{
    setLocked(true);
}

void nkMetadataActionsHandler::unlockSets()
{
    setLocked(false);
}

void nkMetadataActionsHandler::setLocked(bool locked)
{
    {
        const nkScopedUndo undo(true);
        QList<nkdMetadataSet> sets = Selection::sets();
        for (nkdMetadataSet &set : sets) {
            set.setLocked(locked);
        }
    }
    updateActionStates();
}

void nkMetadataActionsHandler::deleteUnassignedSets()
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(tr("Delete All Unassigned Sets")), true);
    nkMetadataService &metadata = nkMetadataService::the();
    QList<nkdMetadataSet> unassigned;
    const QList<nkdMetadataSet> sets = metadata.getAllSets();
    for (const nkdMetadataSet &set : sets) {
        if (!set.isAssigned()) {
            unassigned.append(set);
        }
    }
    metadata.deleteSets(unassigned);
}

// Entries -----------------------------------------------------------------------------------------------

void nkMetadataActionsHandler::createEntry(nkMetadataTypes::ValueType type)
{
    nkdMetadataEntry entry;
    {
        const nkScopedUndo undo(true);
        nkdMetadataSet set = setForNewEntry();
        const RefreshBlocker blocker;
        entry = set.createEntry(type);
    }
    if (!entry.isNull()) {
        Q_EMIT entryCreated(entry);
    }
}

void nkMetadataActionsHandler::deleteAllEntries()
{
    {
        const nkScopedUndo undo(true);
        const nkScopedMultiCommand command(undoTitle(tr("Delete All Entries")), true);
        const QList<nkdMetadataSet> sets = Selection::sets();
        for (const nkdMetadataSet &set : sets) {
            set.getEntries().clear();
        }
    }
    updateActionStates();
}

void nkMetadataActionsHandler::moveSetEntriesToObject()
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(nkUndoString(tr("Move Set Entries To Object")), true);
    nkMetadataEntryMoves::setsToObjects(Selection::sets(), Selection::objects());
}

void nkMetadataActionsHandler::createSetFromObjectEntries()
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(nkUndoString(tr("Create Set From Object Entries")), true);
    const QList<nkdSceneObject> objects = Selection::objects();
    for (const nkdSceneObject &object : objects) {
        nkMetadataEntryMoves::objectToNewSet(object, tr("MetadataSet"));
    }
}

// Assignment and selection ------------------------------------------------------------------------------

void nkMetadataActionsHandler::assignSets(int editorKind)
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(tr("Add Sets to Last Selected Objects")), true);
    nkMetadataService::the().assignSets(nkMetadataEditorKind::selectedObjects(editorKind), Selection::sets());
}

void nkMetadataActionsHandler::assignSetsToLastSelection()
{
    assignSets(nkMetadataModuleSelection::the().getLastSelectionModule());
}

void nkMetadataActionsHandler::selectObjects(int editorKind)
{
    const nkMetadataReferencedObjects objects(nkMetadataService::the().getSelection());
    const nkScopedUndo undo(true);
    objects.selectIn(editorKind);
}

// Files and assets --------------------------------------------------------------------------------------

void nkMetadataActionsHandler::saveSets()
{
    const QList<nkdMetadataSet> sets = Selection::setsToSave();
    const QString file = QFileDialog::getSaveFileName(nullptr, tr("Save Metadata..."), QString(),
                                                      tr("Json File (*.json)"));
    nkMetadataService::the().saveSets(sets, file);
}

void nkMetadataActionsHandler::loadSets()
{
    const nkScopedUndo undo(true);
    const QString file = QFileDialog::getOpenFileName(nullptr, tr("Load Metadata..."), QString(),
                                                      tr("Json File (*.json)"));
    nkMetadataService::the().loadSets(file, nkToObjects(Selection::objects()));
}

void nkMetadataActionsHandler::modifyAssets()
{
    nkAssetsService::the().modifyAssets(Selection::assetsToModify());
}

void nkMetadataActionsHandler::saveAssets()
{
    nkAssetsService::the().saveAssets(Selection::assetsToStore());
}

void nkMetadataActionsHandler::findAssets()
{
    nkAssetsService::the().findAssets(Selection::assets());
}

void nkMetadataActionsHandler::reloadAssets()
{
    nkAssetsService::the().reloadAssets(Selection::unlockedAssets());
}

void nkMetadataActionsHandler::removeAssetLinks()
{
    nkAssetsService::the().removeAssetLinks(Selection::unlockedAssets());
}
