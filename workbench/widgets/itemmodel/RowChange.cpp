#include "RowChange.h"

void RowChange::carryOut(QNKModelItem *parent, const QVector<QNKModelItem *> &rows)
{
    const QNKItemModel::Private::Announcement announcement(d);
    RowPlan plan = RowPlan::make(parent, rows);
    const bool isRoot = parent == d->root.get();
    if (isRoot && (plan.isLittleCommon() || plan.isTooMuch())) {
        reset(plan);
        return;
    }
    if (plan.isTooMuch())
        simplify(plan);
    parent->m_childrenState = QNKModelItem::Children::Made;
    removeRows(plan);
    replaceRows(plan);
    reorderRows(plan);
    insertRows(plan);
    if (plan.anyLosesExpander())
        d->announceExpanders();
}

void RowChange::install(QNKModelItem *parent, const QVector<QNKModelItem *> &rows)
{
    const QVector<QNKModelItem *> former = parent->m_children;
    const QNKModelItem::Children state = parent->m_childrenState;
    for (QNKModelItem *row : former) {
        d->rows.uninstall(row);
        row->m_row = -1;
    }
    adopt(parent, rows);
    parent->m_childrenState = state; // who calls knows better
    for (QNKModelItem *row : former) {
        if (row->m_row < 0)
            d->rows.bury(row);
    }
    d->rows.install(rows);
}

void RowChange::reset(RowPlan &plan)
{
    d->q->beginResetModel();
    restoreBelow(plan);
    install(plan.parent, plan.after);
    d->q->endResetModel();
}

/// Gives the rows to be the children that the plan has taken from them.
void RowChange::restoreBelow(RowPlan &plan)
{
    for (RowPlan &child : plan.below) {
        restoreBelow(child);
        adopt(child.fresh, child.after);
    }
}

void RowChange::adopt(QNKModelItem *parent, const QVector<QNKModelItem *> &rows)
{
    parent->m_children = rows;
    parent->m_childrenState = QNKModelItem::Children::Made;
    for (QNKModelItem *row : rows)
        row->m_parent = parent;
    number(rows, 0);
}

void RowChange::number(const QVector<QNKModelItem *> &rows, int from)
{
    for (int i = from; i < rows.size(); ++i)
        rows[i]->m_row = i;
}

/// A list that no reset can tell, with too many differences: all its rows go and all the new ones come.
void RowChange::simplify(RowPlan &plan)
{
    restoreBelow(plan);
    plan.below.clear();
    plan.diff.makeDisjoint(plan.parent->m_children.size(), plan.after.size());
}

void RowChange::removeRows(RowPlan &plan)
{
    for (int i = plan.diff.removed.size() - 1; i >= 0; --i)
        removeRange(plan.parent, plan.diff.removed[i].first, plan.diff.removed[i].second);
    for (RowPlan &child : plan.below)
        removeRows(child);
}

void RowChange::removeRange(QNKModelItem *parent, int first, int last)
{
    d->q->beginRemoveRows(d->indexOf(parent), first, last);
    const QVector<QNKModelItem *> gone = parent->m_children.mid(first, last - first + 1);
    parent->m_children.remove(first, last - first + 1);
    number(parent->m_children, first);
    for (QNKModelItem *row : gone) {
        d->rows.uninstall(row);
        d->rows.bury(row);
    }
    d->q->endRemoveRows();
}

/// Puts the new objects of rows that stay into the places of the old ones and tells the cells that differ.
void RowChange::replaceRows(RowPlan &plan)
{
    QVector<QNKModelItem *> fresh(plan.diff.origin.isEmpty() ? 0 : plan.diff.beforeCount, nullptr);
    for (int i = 0; i < plan.after.size(); ++i) {
        if (plan.diff.origin[i] >= 0)
            fresh[plan.diff.origin[i]] = plan.after[i];
    }
    fresh.removeAll(nullptr); // in the old order now, without the rows that went
    const QVector<QNKModelItem *> old = plan.parent->m_children;
    for (int i = 0; i < old.size(); ++i)
        replaceRow(plan.parent, old[i], fresh[i]);
    passChildren(plan);
    CellChanges changes;
    for (int i = 0; i < old.size(); ++i) {
        if (old[i] != fresh[i])
            noteDifferences(changes, old[i], fresh[i]);
    }
    for (int i = 0; i < old.size(); ++i) {
        if (old[i] != fresh[i])
            d->rows.bury(old[i]);
    }
    d->announceChanges(plan.parent, changes);
    for (RowPlan &child : plan.below)
        replaceRows(child);
}

void RowChange::replaceRow(QNKModelItem *parent, QNKModelItem *old, QNKModelItem *fresh)
{
    if (old == fresh)
        return;
    d->rows.replace(old, fresh);
    fresh->m_parent = parent;
    fresh->m_row = old->m_row;
    fresh->m_toldChildren = old->m_toldChildren;
    parent->m_children[old->m_row] = fresh;
    if (!fresh->m_children.isEmpty()) // nobody has counted these
        d->rows.install(fresh->m_children);
}

/// Passes the children that views know of from the old objects to the new ones.
void RowChange::passChildren(RowPlan &plan)
{
    for (RowPlan &child : plan.below) {
        adopt(child.fresh, child.parent->m_children);
        child.parent->m_children.clear();
        child.parent = child.fresh;
    }
}

/// Compares what the old object of a row had been asked for: nothing else can be known to anybody.
void RowChange::noteDifferences(CellChanges &changes, const QNKModelItem *old, const QNKModelItem *fresh)
{
    const int row = fresh->m_row;
    for (const QNKModelItem::Datum &datum : qAsConst(old->m_data)) {
        if (d->isColumn(datum.column) && !isSameCellValue(datum.value, fresh->data(datum.role, datum.column)))
            changes.add(row, datum.column, datum.role);
    }
    const QNKItemModel::Private::Collector *commit = d->collectorOf(d->rows.internalId(fresh));
    if (commit && commit->firstColumn >= 0) { // the old object held what was committed, views what was before
        for (int role : commit->roles)
            changes.add(row, commit->firstColumn, role), changes.add(row, commit->lastColumn, role);
    }
}

void RowChange::reorderRows(RowPlan &plan)
{
    if (plan.diff.reordered)
        reorder(plan);
    for (RowPlan &child : plan.below)
        reorderRows(child);
}

void RowChange::reorder(const RowPlan &plan)
{
    const QList<QPersistentModelIndex> parents{QPersistentModelIndex(d->indexOf(plan.parent))};
    Q_EMIT d->q->layoutAboutToBeChanged(parents);
    QVector<QNKModelItem *> order;
    order.reserve(plan.parent->m_children.size());
    for (int i = 0; i < plan.after.size(); ++i) {
        if (plan.diff.origin[i] >= 0)
            order.append(plan.after[i]);
    }
    plan.parent->m_children = order;
    number(order, 0);
    updatePersistentIndexes(plan.parent);
    Q_EMIT d->q->layoutChanged(parents);
}

void RowChange::updatePersistentIndexes(const QNKModelItem *parent)
{
    QModelIndexList from, to;
    const QModelIndexList persistent = d->q->persistentIndexList();
    for (const QModelIndex &index : persistent) {
        const QNKModelItem *row = d->rows.row(index.internalId());
        if (row && row->m_parent == parent && row->m_row != index.row()) {
            from.append(index);
            to.append(d->indexOf(row, index.column()));
        }
    }
    d->q->changePersistentIndexList(from, to);
}

void RowChange::insertRows(RowPlan &plan)
{
    for (const auto &range : qAsConst(plan.diff.inserted))
        insertRange(plan, range.first, range.second);
    for (RowPlan &child : plan.below)
        insertRows(child);
}

void RowChange::insertRange(RowPlan &plan, int first, int last)
{
    d->q->beginInsertRows(d->indexOf(plan.parent), first, last);
    QVector<QNKModelItem *> &children = plan.parent->m_children;
    children.insert(first, last - first + 1, nullptr);
    for (int i = first; i <= last; ++i) {
        children[i] = plan.after[i];
        children[i]->m_parent = plan.parent;
    }
    number(children, first);
    d->rows.install(plan.after.mid(first, last - first + 1));
    d->q->endInsertRows();
}
