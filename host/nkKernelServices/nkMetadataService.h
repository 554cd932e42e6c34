#pragma once

#include "nkKernelServicesExport.h"
#include "nkMetadataTypes.h"
#include "nkdMetadataEntry.h"
#include "nkdMetadataSet.h"
#include "nkdSceneObject.h"

#include <QObject>
#include <QStringList>

/// The metadata of the scene: sets, assignments, clipboards, the metadata selection, set files and string
/// libraries.
///
/// Every list operation is one change with all its flags, however long the lists are, inside the caller's
/// undo scope (or a step of its own). Null and dead handles in lists are skipped; an empty list does nothing.
class NK_KERNEL_SERVICES_EXPORT nkMetadataService : public QObject
{
    Q_OBJECT
public:
    static nkMetadataService &the();

    /// True when the object may carry metadata: every living scene object. False for null.
    virtual bool canHaveMetadata(const nkdSceneObject &object) const = 0;

    /// Creates a set, assigned to objects (none: unassigned), in this order.
    /// metadataChanged(1), with 4 where objects were given.
    /// @param name made unique where another set has it; empty: "MetadataSet", made unique
    virtual nkdMetadataSet createSet(const QString &name, const QList<nkdSceneObject> &objects) = 0;
    /// Deletes the sets, locked ones too, and their assignments. Object sets are skipped: they live and die
    /// with their object. Deleted sets leave the metadata selection before the change is announced.
    /// metadataChanged(1 | 2 | 4, as each holds).
    virtual void deleteSets(const QList<nkdMetadataSet> &sets) = 0;
    /// Duplicates each set: entries, colour and assignments; name made unique, not locked, no asset. An
    /// object set gives an unassigned set. metadataChanged(1 | 2 | 4, as each holds).
    /// @return the new sets, in the order of the given ones
    virtual QList<nkdMetadataSet> duplicateSets(const QList<nkdMetadataSet> &sets) = 0;
    /// Assigns every set to every object that does not carry it yet. metadataChanged(4).
    virtual void assignSets(const QList<nkdObject> &objects, const QList<nkdMetadataSet> &sets) = 0;
    /// Unassigns every given set from every given object. metadataChanged(4).
    virtual void removeAssignments(const QList<nkdMetadataSet> &sets,
                                   const QList<nkdSceneObject> &objects) = 0;
    /// Every shared set of the scene in order of creation; no object sets.
    virtual QList<nkdMetadataSet> getAllSets() const = 0;
    /// Whether getAllSets would answer any. O(1).
    virtual bool hasSets() const = 0;
    /// base itself where no shared set has it, else base followed by 2, 3, ...
    virtual QString getUniqueSetName(const QString &base) const = 0;

    /// Replaces the set clipboard by copies of the sets as they are now; where there are none to copy it stays
    /// as it is. Not undoable.
    virtual void copySets(const QList<nkdMetadataSet> &sets) = 0;
    /// Creates the sets of the clipboard, names made unique, assigned to the targets (none: unassigned).
    /// metadataChanged(1 | 2 | 4, as each holds).
    virtual void pasteSets(const QList<nkdSceneObject> &targets) = 0;
    virtual bool hasNoCopiedSets() const = 0;

    /// Replaces the entry clipboard; where there are none to copy it stays as it is. Not undoable.
    virtual void copyEntries(const QList<nkdMetadataEntry> &entries) = 0;
    /// Handles to the clipboard's entries: copies that stand in no set (getSet is null) and do not change
    /// when their originals do. Empty when none were copied.
    virtual QList<nkdMetadataEntry> getClipboardEntries() const = 0;
    /// Appends copies of the clipboard's entries to each target set, each set once, with keys made unique;
    /// sets that are not editable are skipped. metadataChanged(2).
    virtual void pasteEntries(const QList<nkdMetadataSet> &targets) = 0;
    virtual bool hasNoCopiedEntries() const = 0;

    /// The metadata selection: sets and scene objects mixed, in selection order, living ones only.
    virtual QList<nkdObject> getSelection() const = 0;
    /// Makes these objects the metadata selection, each once, and emits selectionChanged before it returns:
    /// always, also when nothing changed and inside undo scopes. Re-entry is allowed. Not undoable.
    virtual void setSelection(const QList<nkdObject> &objects) = 0;

    /// Writes the sets, in order, to a JSON file. An empty name does nothing. Failures go to nkLogService.
    virtual void saveSets(const QList<nkdMetadataSet> &sets, const QString &fileName) = 0;
    /// Reads the sets of a JSON file, creates them and assigns them to the objects: one change, whole or not
    /// at all. An empty name does nothing. Failures go to nkLogService.
    /// @return the new sets; empty on failure
    virtual QList<nkdMetadataSet> loadSets(const QString &fileName, const QList<nkdObject> &objects) = 0;

    /// Uses these text files as string libraries for completion in metadata line edits.
    virtual void setStringLibraries(const QStringList &files) = 0;
    virtual QStringList getStringLibraries() const = 0;
    /// Which library (row) feeds completions; -1, and any row beyond the list, for none.
    virtual void setActiveStringLibraryIndex(int index) = 0;
    virtual int getActiveStringLibraryIndex() const = 0;

Q_SIGNALS:
    /// After any metadata change, undo and redo included; flags is an OR of ChangeFlag bits.
    void metadataChanged(nkMetadataTypes::ChangeFlag flags);
    /// The metadata selection was set, or objects of it ceased to live.
    void selectionChanged(const QList<nkdObject> &objects);
    /// The list of string libraries or the active one changed.
    void stringLibrariesChanged();
};
