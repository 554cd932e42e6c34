#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdObject.h>

#include <QList>

class QMimeData;
class TreeDragRecord;
class nkMetadataEntryMime;

/// What happens when something is dropped on a row of a tree of metadata. Sets on an object, and objects on
/// a set, are assigned; with Qt::MoveAction they also leave the row they were dragged from. Rows of the
/// key/value table are copied into the set, or into the object's own set; where keys clash the user is asked
/// once the drag has ended.
class MetadataTreeDrop
{
public:
    /// @param target the object of the row: a set or a scene object
    explicit MetadataTreeDrop(const nkdObject &target);

    bool canTake(const QMimeData *data, Qt::DropAction action) const;
    /// One undo step. @return whether the drop was taken
    bool take(const QMimeData *data, Qt::DropAction action) const;

private:
    bool fits(const TreeDragRecord &record) const;
    QList<TreeDragRecord> fittingRecords(const QMimeData *data) const;
    void assign(const QList<TreeDragRecord> &records, bool move) const;
    static void leaveParents(const QList<TreeDragRecord> &records);
    nkdMetadataSet entryTarget() const;
    QList<nkMetadataEntryMime> foreignEntries(const QMimeData *data) const;

    nkdObject m_target;
};
