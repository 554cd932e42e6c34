// Who changes rows when: reloads, children lists, and what waits until rows may change.

#include "CellChanges.h"
#include "QNKItemModelPrivate.h"
#include "RowChange.h"

#include <QSet>

#include <algorithm>
#include <memory>

namespace {
/// Reloads asked for while another runs follow it at once, up to this many; a listener that asks each time
/// gets the next ones from the event loop, so that the program stays alive.
constexpr int MostChainedReloads = 3;

/// Rows that wait to become children; those that are not claimed die with it.
struct WaitingRows
{
    QVector<QNKModelItem *> rows;
    QSet<QNKModelItem *> fresh; // the others were children already

    ~WaitingRows() { qDeleteAll(fresh); }
};

/// A row's place in the tree: its position below each ancestor, outermost first.
QVector<int> pathOf(const QNKModelItem *row)
{
    QVector<int> path;
    for (; row && row->row() >= 0; row = row->parent())
        path.prepend(row->row());
    return path;
}
} // namespace

void QNKItemModel::Private::requestReload()
{
    if (canChangeRows())
        runReload();
    else
        deferReload();
}

void QNKItemModel::Private::deferReload()
{
    if (reloadWaits)
        return;
    reloadWaits = true;
    const auto reload = [this] {
        reloadWaits = false;
        if (chainedReloads >= MostChainedReloads) {
            QMetaObject::invokeMethod(q, &QNKItemModel::reload, Qt::QueuedConnection);
            return;
        }
        ++chainedReloads;
        requestReload();
        --chainedReloads;
    };
    defer(reload);
}

void QNKItemModel::Private::runReload()
{
    const Operation operation(this);
    reloading = true;
    Q_EMIT q->aboutToReload();
    if (QNKModelItem *const reloaded = root.get()) {
        capturing = true;
        reloaded->reload();
        capturing = false;
        if (hasCaptured) {
            hasCaptured = false;
            RowChange(this).carryOut(reloaded, std::exchange(captured, {}));
        }
    }
    reloading = false;
    const Announcement announcement(this);
    Q_EMIT q->reloaded();
}

void QNKItemModel::Private::changeChildren(QNKModelItem *parent, const QVector<QNKModelItem *> &newRows)
{
    const Operation operation(this);
    if (capturing && parent == root.get())
        capture(newRows);
    else if (parent->m_childrenState == QNKModelItem::Children::BeingMade)
        RowChange(this).install(parent, newRows);
    else if (canChangeRows())
        RowChange(this).carryOut(parent, newRows);
    else
        deferChildren(parent, newRows);
}

/// Keeps the root's new rows until its reload has returned; the last list counts.
void QNKItemModel::Private::capture(const QVector<QNKModelItem *> &newRows)
{
    const QVector<QNKModelItem *> former = std::exchange(captured, newRows);
    hasCaptured = true;
    for (QNKModelItem *row : former) {
        if (row->m_slot < 0 && !newRows.contains(row))
            rows.bury(row);
    }
}

void QNKItemModel::Private::deferChildren(QNKModelItem *parent, const QVector<QNKModelItem *> &newRows)
{
    const auto waiting = std::make_shared<WaitingRows>();
    waiting->rows = newRows;
    for (QNKModelItem *row : newRows) {
        if (row->m_slot < 0)
            waiting->fresh.insert(row);
    }
    const bool isRoot = parent == root.get();
    const quintptr id = isRoot ? 0 : rows.internalId(parent);
    defer([this, waiting, parent, isRoot, id] {
        if ((isRoot ? root.get() : rows.row(id)) != parent)
            return; // gone, or made anew meanwhile
        QSet<QNKModelItem *> usable = std::exchange(waiting->fresh, {});
        for (QNKModelItem *row : qAsConst(parent->m_children))
            usable.insert(row);
        QVector<QNKModelItem *> usableRows;
        for (QNKModelItem *row : qAsConst(waiting->rows)) {
            if (usable.contains(row))
                usableRows.append(row);
        }
        changeChildren(parent, usableRows);
    });
}

QVector<quintptr> QNKItemModel::Private::rowIds(const QModelIndexList &indexes) const
{
    QVector<QPair<QVector<int>, quintptr>> places;
    QSet<const QNKModelItem *> seen;
    for (const QModelIndex &index : indexes) {
        const QNKModelItem *const row = index.isValid() ? rowOf(index) : nullptr;
        if (!row || seen.contains(row))
            continue;
        seen.insert(row);
        places.append({pathOf(row), index.internalId()});
    }
    std::sort(places.begin(), places.end());
    QVector<quintptr> ids;
    ids.reserve(places.size());
    for (const auto &place : qAsConst(places))
        ids.append(place.second);
    return ids;
}

void QNKItemModel::Private::reloadRows(const QVector<quintptr> &ids)
{
    if (!canChangeRows()) {
        defer([this, ids] { reloadRows(ids); });
        return;
    }
    const Operation operation(this);
    QVector<ChangedRow> changed;
    bool expandersChanged = false;
    for (quintptr id : ids) {
        QNKModelItem *const row = rows.row(id);
        if (!row)
            continue;
        ChangedRow difference{id, reloadRow(row)};
        if (rows.row(id) != row)
            continue;                                  // it went, or was made anew, while it refreshed itself
        if (Collector *const commit = collectorOf(id)) // an edit is being committed: it tells when it is done
            commit->note(difference.cells);
        else if (!difference.cells.isEmpty())
            changed.append(difference);
        const QNKModelItem::Answer told = row->m_toldChildren;
        if (told != QNKModelItem::Answer::None && row->m_childrenState == QNKModelItem::Children::Unmade)
            expandersChanged = hasChildren(row) != (told == QNKModelItem::Answer::Yes) || expandersChanged;
    }
    announceRows(changed);
    if (expandersChanged)
        announceExpanders();
}

/// Has a row refresh itself. @return column and role of the cells that differ from what they were
QNKItemModel::Private::Cells QNKItemModel::Private::reloadRow(QNKModelItem *row)
{
    const QNKModelItem::Data before = row->m_data;
    const Collector quiet(this, row);
    row->reload();
    Cells cells;
    for (const QNKModelItem::Datum &datum : before) {
        if (isColumn(datum.column) && !isSameCellValue(datum.value, row->data(datum.role, datum.column)))
            cells.append({datum.column, datum.role});
    }
    return cells;
}

void QNKItemModel::Private::announceRows(const QVector<ChangedRow> &changed)
{
    for (int i = 0; i < changed.size();) {
        const QNKModelItem *const first = rows.row(changed[i].id);
        const QNKModelItem *const parent = first ? first->m_parent : nullptr;
        CellChanges changes;
        for (; i < changed.size(); ++i) {
            const QNKModelItem *const row = rows.row(changed[i].id);
            if (row && row->m_parent != parent)
                break;
            for (const auto &cell : changed[i].cells) {
                if (row)
                    changes.add(row->m_row, cell.first, cell.second);
            }
        }
        if (parent)
            announceChanges(parent, changes);
    }
}

void QNKItemModel::Private::announceChanges(const QNKModelItem *parent, const CellChanges &changes)
{
    for (const CellChanges::Change &change : changes.merged()) {
        announceCells(indexOf(parent->child(change.firstRow), change.firstColumn),
                      indexOf(parent->child(change.lastRow), change.lastColumn), change.roles);
    }
}
