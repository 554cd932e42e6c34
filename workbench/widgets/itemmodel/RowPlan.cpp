#include "RowPlan.h"

#include <nkQt4Ext/QNKModelItem.h>

namespace {
/// More separate insertions and removals than this are told by one reset.
constexpr int MostAnnouncements = 128;
/// Every insertion or removal costs model, proxies and views a walk over the rows of its parent. With more row
/// visits than this a reset, which costs about five visits a row, is the cheaper way.
constexpr qint64 HighestCost = 4000000;
/// Up to this size a list may come, or go, row by row although most of it is new.
constexpr int SmallList = 1000;
} // namespace

RowPlan RowPlan::make(QNKModelItem *parent, const QVector<QNKModelItem *> &rows)
{
    RowPlan plan;
    plan.parent = parent;
    plan.after = rows;
    plan.diff = RowDiff::between(parent->m_children, rows);
    for (int i = 0; i < rows.size(); ++i) {
        const int origin = plan.diff.origin[i];
        if (origin >= 0 && parent->m_children[origin] != rows[i])
            plan.planBelow(parent->m_children[origin], rows[i]);
    }
    return plan;
}

/// Plans the children of a row that stays, where views know of them.
void RowPlan::planBelow(QNKModelItem *old, QNKModelItem *replacement)
{
    using Answer = QNKModelItem::Answer;
    const bool counted = old->m_childrenState == QNKModelItem::Children::Made;
    const bool has = replacement->hasChildren();
    if (!counted && old->m_toldChildren == Answer::Yes && !has)
        losesExpander = true;
    if (!counted && !(old->m_toldChildren == Answer::No && has))
        return; // nobody counted them: the new row keeps its own, or makes them when it is asked
    if (old->m_children.isEmpty() && !has) {
        replacement->m_childrenState = QNKModelItem::Children::Made;
        return;
    }
    makeChildren(replacement);
    const QVector<QNKModelItem *> rows = replacement->m_children;
    replacement->m_children.clear(); // until its turn it has the old row's children
    below.push_back(make(old, rows));
    below.back().fresh = replacement;
}

void RowPlan::makeChildren(QNKModelItem *row)
{
    if (row->m_childrenState == QNKModelItem::Children::Made)
        return;
    row->m_childrenState = QNKModelItem::Children::BeingMade;
    row->loadChildren();
    row->m_childrenState = QNKModelItem::Children::Made;
}

bool RowPlan::isLittleCommon() const
{
    const int before = parent->m_children.size();
    const int larger = qMax(before, after.size());
    const int smaller = qMin(before, after.size());
    return diff.common * 2 < smaller || (larger > SmallList && diff.common * 2 < larger);
}

bool RowPlan::isTooMuch() const
{
    return announcementCount() > MostAnnouncements || cost() > HighestCost;
}

int RowPlan::announcementCount() const
{
    int count = diff.removed.size() + diff.inserted.size();
    for (const RowPlan &plan : below)
        count += plan.announcementCount();
    return count;
}

qint64 RowPlan::cost() const
{
    const qint64 ranges = diff.removed.size() + diff.inserted.size();
    qint64 cost = ranges > 1 ? ranges * diff.origin.size() : 0;
    for (const RowPlan &plan : below)
        cost += plan.cost();
    return cost;
}

bool RowPlan::anyLosesExpander() const
{
    if (losesExpander)
        return true;
    for (const RowPlan &plan : below) {
        if (plan.anyLosesExpander())
            return true;
    }
    return false;
}
