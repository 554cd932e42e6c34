#include "frame/nkMetadataTableEntries.h"

#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataRowHandles.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QMap>
#include <QSet>

#include <algorithm>

namespace {

using Conflicts = QMap<quint64, QList<nkdMetadataEntry>>;

/// The set that pasting onto a selected object goes to; null where it can take none.
nkdMetadataSet targetOf(const nkdObject &object)
{
    const nkdMetadataSet set(object);
    if (!set.isNull()) {
        return set;
    }
    const nkdSceneObject sceneObject(object);
    return nkMetadataService::the().canHaveMetadata(sceneObject)
               ? nkdMetadata::fromObject(sceneObject).getObjectSet()
               : nkdMetadataSet();
}

QList<nkdMetadataSet> pasteTargets()
{
    QList<nkdMetadataSet> targets;
    QSet<quint64> known;
    const QList<nkdObject> selection = nkMetadataService::the().getSelection();
    for (const nkdObject &object : selection) {
        const nkdMetadataSet target = targetOf(object);
        if (!target.isNull() && !known.contains(target.getObjectId())) {
            known.insert(target.getObjectId());
            targets.append(target);
        }
    }
    return targets;
}

Conflicts conflictsOf(const QList<nkdMetadataSet> &targets, const QList<nkdMetadataEntry> &entries)
{
    Conflicts conflicts;
    for (const nkdMetadataSet &target : targets) {
        const QList<nkdMetadataEntry> clashing = nkMetadataGUIUtils::getConflictingEntries(target, entries);
        if (!clashing.isEmpty()) {
            conflicts.insert(target.getObjectId(), clashing);
        }
    }
    return conflicts;
}

void removeAll(const Conflicts &conflicts)
{
    for (auto it = conflicts.begin(); it != conflicts.end(); ++it) {
        nkdMetadataEntryList entries = nkdMetadataSet(it.key()).getEntries();
        for (const nkdMetadataEntry &entry : it.value()) {
            entries.remove(entry);
        }
    }
}

/// Asks what to do about clashing keys and makes room for the pasted ones. @return false to paste nothing
bool settle(const Conflicts &conflicts)
{
    if (conflicts.isEmpty()) {
        return true;
    }
    switch (nkMetadataGUIUtils::showConflictingEntriesWarning(conflicts)) {
    case nkMetadataGUIUtils::Cancel:
        return false;
    case nkMetadataGUIUtils::Replace:
        removeAll(conflicts);
        return true;
    default:
        return true;
    }
}

} // namespace

QList<nkMetadataTableEntries::Row> nkMetadataTableEntries::selectedRows(const QAbstractItemView *view)
{
    QModelIndexList indexes = view->selectionModel()->selectedRows(nkMetadataKeyValue::AssignmentColumn);
    std::sort(indexes.begin(), indexes.end(),
              [](const QModelIndex &left, const QModelIndex &right) { return left.row() < right.row(); });
    QList<Row> rows;
    rows.reserve(indexes.size());
    for (const QModelIndex &index : qAsConst(indexes)) {
        rows.append({nkMetadataRowHandles::set(index), nkMetadataRowHandles::entry(index)});
    }
    return rows;
}

void nkMetadataTableEntries::copy(const QList<Row> &rows)
{
    QList<nkdMetadataEntry> entries;
    for (const Row &row : rows) {
        if (!row.second.isNull()) {
            entries.append(row.second);
        }
    }
    if (!entries.isEmpty()) {
        nkMetadataService::the().copyEntries(entries);
    }
}

void nkMetadataTableEntries::paste()
{
    const nkScopedUndo undo(true);
    const QList<nkdMetadataEntry> entries = nkMetadataService::the().getClipboardEntries();
    if (entries.isEmpty()) {
        return;
    }
    const QList<nkdMetadataSet> targets = pasteTargets();
    if (settle(conflictsOf(targets, entries))) {
        nkMetadataService::the().pasteEntries(targets);
    }
}

void nkMetadataTableEntries::remove(const QList<Row> &rows)
{
    const nkScopedUndo undo(true);
    // Texts that the host keeps are copied to the heap: literals of the plug-in go when it is unloaded.
    const nkScopedMultiCommand step(
        nkUndoString(QCoreApplication::translate("nkMetadataEditorModule", "Delete Entries"),
                     QString(QLatin1String("Metadata Editor")), QString()));
    for (const Row &row : rows) {
        if (!row.first.isNull() && !row.second.isNull()) {
            row.first.getEntries().remove(row.second);
        }
    }
}
