#include "MetadataTreeDrop.h"

#include "DroppedEntries.h"
#include "TreeDragRecord.h"

#include <nkKernelServices/nkMetadataEntryMime.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QCoreApplication>
#include <QMimeData>

namespace {

// The two ends of an assignment, whichever of them was dragged.
struct Assignment
{
    nkdMetadataSet set;
    nkdSceneObject object;
};

Assignment assignmentOf(const nkdObject &one, const nkdObject &other)
{
    const nkdMetadataSet set(one);
    return set.isNull() ? Assignment{nkdMetadataSet(other), nkdSceneObject(one)}
                        : Assignment{set, nkdSceneObject(other)};
}

nkUndoString undoTitle(bool move)
{
    const char *title = move ? QT_TRANSLATE_NOOP("Metadata", "Move Assignments")
                             : QT_TRANSLATE_NOOP("Metadata", "Assign Sets");
    return nkUndoString(QCoreApplication::translate("Metadata", title), QStringLiteral("Metadata Editor"),
                        QString());
}

} // namespace

MetadataTreeDrop::MetadataTreeDrop(const nkdObject &target) : m_target(target) {}

bool MetadataTreeDrop::canTake(const QMimeData *data, Qt::DropAction action) const
{
    if (!data || !m_target.isAlive()) {
        return false;
    }
    if (data->hasFormat(TreeDragRecord::mimeType())) {
        return (action == Qt::CopyAction || action == Qt::MoveAction) && !fittingRecords(data).isEmpty();
    }
    return action == Qt::CopyAction && entryTarget().isEditable() && !foreignEntries(data).isEmpty();
}

bool MetadataTreeDrop::take(const QMimeData *data, Qt::DropAction action) const
{
    if (!canTake(data, action)) {
        return false;
    }
    if (data->hasFormat(TreeDragRecord::mimeType())) {
        assign(fittingRecords(data), action == Qt::MoveAction);
    } else {
        DroppedEntries::copyTo(entryTarget(), foreignEntries(data));
    }
    return true;
}

bool MetadataTreeDrop::fits(const TreeDragRecord &record) const
{
    const nkdObject dragged(record.objectId());
    const Assignment assignment = assignmentOf(m_target, dragged);
    return !assignment.set.isNull() && !assignment.set.isObjectSet() && !assignment.object.isNull();
}

QList<TreeDragRecord> MetadataTreeDrop::fittingRecords(const QMimeData *data) const
{
    QList<TreeDragRecord> fitting;
    for (const TreeDragRecord &record : TreeDragRecord::fromMimeData(data)) {
        if (record.parentId() != m_target.getObjectId() && fits(record)) {
            fitting.append(record);
        }
    }
    return fitting;
}

void MetadataTreeDrop::assign(const QList<TreeDragRecord> &records, bool move) const
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(move));
    QList<nkdMetadataSet> sets;
    QList<nkdObject> objects;
    for (const TreeDragRecord &record : records) {
        const Assignment assignment = assignmentOf(m_target, nkdObject(record.objectId()));
        sets.append(assignment.set);
        objects.append(assignment.object);
    }
    const bool targetIsSet = !nkdMetadataSet(m_target).isNull();
    nkMetadataService::the().assignSets(targetIsSet ? objects : objects.mid(0, 1),
                                        targetIsSet ? sets.mid(0, 1) : sets);
    if (move) {
        leaveParents(records);
    }
}

// A row below another one stands for an assignment; a top-level row leaves nothing.
void MetadataTreeDrop::leaveParents(const QList<TreeDragRecord> &records)
{
    for (const TreeDragRecord &record : records) {
        const Assignment left = assignmentOf(nkdObject(record.parentId()), nkdObject(record.objectId()));
        if (!left.set.isNull() && !left.object.isNull()) {
            nkMetadataService::the().removeAssignments({left.set}, {left.object});
        }
    }
}

nkdMetadataSet MetadataTreeDrop::entryTarget() const
{
    const nkdMetadataSet set(m_target);
    return set.isNull() ? nkdMetadata(m_target.getObjectId()).getObjectSet() : set;
}

// Entries that already stand in the target are left out: copying them to where they are would only ask
// about conflicts with themselves.
QList<nkMetadataEntryMime> MetadataTreeDrop::foreignEntries(const QMimeData *data) const
{
    const nkdMetadataSet target = entryTarget();
    QList<nkMetadataEntryMime> foreign;
    for (const nkMetadataEntryMime &record : DroppedEntries::fromMimeData(data)) {
        if (nkdMetadataEntry(record.getEntryId()).getSet() != target) {
            foreign.append(record);
        }
    }
    return foreign;
}
