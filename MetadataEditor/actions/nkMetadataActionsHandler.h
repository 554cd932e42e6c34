#pragma once

#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QObject>

class nkMetadataActions;
struct nkMetadataActionInputs;

/// Carries out the commands of the catalogue on the host's metadata selection, read when a command runs, and
/// says which commands make sense. Commands that concern the trees alone are passed on as signals. No command
/// shows a message of its own; the host reports its failures.
class nkMetadataActionsHandler : public QObject
{
    Q_OBJECT
public:
    /// Connects every action of the catalogue, which owns the handler, and follows the metadata selection.
    explicit nkMetadataActionsHandler(nkMetadataActions *actions);
    ~nkMetadataActionsHandler() override;

public Q_SLOTS:
    /// Evaluates which actions and sub-menus are enabled now, "Create Entry" included.
    void updateActionStates();

    /// Creates a set, assigned to the selected objects.
    void createSet();
    void copySets();
    /// Pastes the sets of the clipboard onto the selected objects.
    void pasteSets();
    void duplicateSets();
    /// Deletes the selected sets, while the tree with the keyboard focus lists sets: the key can reach this
    /// from a list of objects.
    void deleteSets();
    void lockSets();
    void unlockSets();
    /// Deletes every set of the scene that is assigned to nothing.
    void deleteUnassignedSets();

    /// Creates an entry in the one selected set, or among the own entries of the one selected object. Does
    /// nothing where more or nothing is selected, or the set is not editable.
    void createEntry(nkMetadataTypes::ValueType type);
    /// Empties the selected sets, locked ones too.
    void deleteAllEntries();
    /// Moves the entries of the selected sets behind the own entries of each selected object. Without an
    /// object to take them they stay.
    void moveSetEntriesToObject();
    /// Turns the own entries of each selected object into a set assigned to it.
    void createSetFromObjectEntries();

    /// Assigns the selected sets to what is selected in the editor of this kind (nkMetadataEditorKind).
    void assignSets(int editorKind);
    /// Likewise, in the editor in which the user selected something most recently.
    void assignSetsToLastSelection();
    /// Selects the objects that the selection refers to in the editor of this kind, or in all.
    void selectObjects(int editorKind);

    /// Writes the selected sets, and those of the selected objects, to a file that the user chooses.
    void saveSets();
    /// Reads sets from a file that the user chooses and assigns them to the selected objects.
    void loadSets();
    void modifyAssets();
    void saveAssets();
    void findAssets();
    void reloadAssets();
    void removeAssetLinks();

Q_SIGNALS:
    /// The tree with the focus is to edit the name of its current row.
    void renameSet();
    /// Every tree is to take the selected assignments, or all of the selected rows', away.
    void removeSelectedAssignments();
    void removeAllAssignments();
    /// The tree with the focus is to select all its rows, none, or those that are not.
    void selectAll();
    void deselectAll();
    void invertSelection();
    /// The focus mode was switched.
    void graphFocusedAction(bool toggled);
    /// A set was created; object is the last one it was assigned to, null where there was none.
    void setCreated(const nkdMetadataSet &set, const nkdSceneObject &object);
    /// An entry was created, after the host announced it.
    void entryCreated(const nkdMetadataEntry &entry);

private:
    void connectActions();
    void connectEntryTypes();
    void connectEditors();
    void evaluateRules();
    void apply(const nkMetadataActionInputs &inputs);
    bool isSetsMode() const;
    void setLocked(bool locked);

    nkMetadataActions *const m_actions;
};
