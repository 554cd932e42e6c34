#include "ProxyMapping.h"

#include "RowJudge.h"

#include <QAbstractItemModel>

ProxyMapping::ProxyMapping(const RowJudge &judge) : m_judge(judge) {}

ProxyMapping::~ProxyMapping() = default;

void ProxyMapping::setSource(QAbstractItemModel *source)
{
    m_source = source;
    clear();
}

void ProxyMapping::clear()
{
    m_top.reset();
}

template <typename Visit>
void ProxyMapping::visit(ProxyRows &rows, Visit visitor)
{
    visitor(rows);
    for (auto &below : rows.below)
        visit(*below.second, visitor);
}

void ProxyMapping::forgetFilter()
{
    if (m_top)
        visit(*m_top, [](ProxyRows &rows) { rows.forget(); });
}

void ProxyMapping::forgetOrders()
{
    if (m_top)
        visit(*m_top, [](ProxyRows &rows) { rows.isOrdered = false; });
}

void ProxyMapping::sortAnew()
{
    forgetOrders();
    if (m_top) {
        visit(*m_top, [this](ProxyRows &rows) {
            if (rows.isBuilt)
                arrange(rows);
        });
    }
}

ProxyRows *ProxyMapping::top()
{
    if (!m_source)
        return nullptr;
    if (!m_top)
        m_top = std::make_unique<ProxyRows>(nullptr, -1);
    ensureBuilt(*m_top);
    return m_top.get();
}

ProxyRows *ProxyMapping::rows(const QModelIndex &sourceParent)
{
    if (!sourceParent.isValid())
        return top();
    if (sourceParent.column() != 0)
        return nullptr;
    ProxyRows *const above = rows(sourceParent.parent());
    if (!above || sourceParent.row() >= above->places.size() || !above->shows(sourceParent.row()))
        return nullptr;
    return rowsBelow(*above, sourceParent.row());
}

ProxyRows *ProxyMapping::rowsBelow(ProxyRows &rows, int sourceRow)
{
    ProxyRows &below = listBelow(rows, sourceRow);
    ensureBuilt(below);
    return &below;
}

ProxyRows &ProxyMapping::listBelow(ProxyRows &rows, int sourceRow)
{
    std::unique_ptr<ProxyRows> &below = rows.below[sourceRow];
    if (!below)
        below = std::make_unique<ProxyRows>(&rows, sourceRow);
    return *below;
}

ProxyRows *ProxyMapping::known(const QModelIndex &sourceParent) const
{
    if (!sourceParent.isValid())
        return m_top.get();
    const ProxyRows *const above = sourceParent.column() == 0 ? known(sourceParent.parent()) : nullptr;
    if (!above)
        return nullptr;
    const auto found = above->below.find(sourceParent.row());
    return found == above->below.end() ? nullptr : found->second.get();
}

bool ProxyMapping::isShown(const ProxyRows &rows)
{
    for (const ProxyRows *at = &rows; at->above; at = at->above) {
        if (!at->above->isBuilt || !at->above->shows(at->row))
            return false;
    }
    return true;
}

bool ProxyMapping::isParentShown(const QModelIndex &sourceParent) const
{
    if (!sourceParent.isValid())
        return true;
    const ProxyRows *const above = known(sourceParent.parent());
    return sourceParent.column() == 0 && above && above->isBuilt && above->shows(sourceParent.row())
           && isShown(*above);
}

QModelIndex ProxyMapping::sourceParent(const ProxyRows &rows) const
{
    return rows.above ? m_source->index(rows.row, 0, sourceParent(*rows.above)) : QModelIndex();
}

QModelIndex ProxyMapping::sourceIndex(const ProxyRows &rows, int sourceRow, int column) const
{
    return m_source->index(sourceRow, column, sourceParent(rows));
}

bool ProxyMapping::accepts(ProxyRows &rows, int sourceRow)
{
    return accepts(rows, sourceRow, sourceParent(rows));
}

bool ProxyMapping::accepts(ProxyRows &rows, int sourceRow, const QModelIndex &parent)
{
    return rows.isWithin || m_judge.accepts(sourceRow, parent)
           || (isRecursive && acceptsBelow(rows, sourceRow, parent));
}

bool ProxyMapping::acceptsBelow(ProxyRows &rows, int sourceRow, const QModelIndex &parent)
{
    if (!m_source->hasChildren(m_source->index(sourceRow, 0, parent)))
        return false;
    ProxyRows &below = listBelow(rows, sourceRow);
    return hasAccepted(below); // the rows above may be half built themselves
}

bool ProxyMapping::hasAccepted(ProxyRows &rows)
{
    if (rows.isBuilt)
        return !rows.shown.isEmpty();
    if (!rows.isJudged)
        judge(rows);
    return rows.hasAccepted;
}

/// Whether every row below one is accepted for its sake, or for the sake of a row above it.
bool ProxyMapping::isWithin(const ProxyRows &rows, int sourceRow) const
{
    return acceptsBelowRows && (rows.isWithin || m_judge.accepts(sourceRow, sourceParent(rows)));
}

bool ProxyMapping::isWithinChanged(const ProxyRows &rows, int sourceRow) const
{
    const auto found = rows.below.find(sourceRow);
    return found != rows.below.end() && (found->second->isBuilt || found->second->isJudged)
           && found->second->isWithin != isWithin(rows, sourceRow);
}

void ProxyMapping::ensureBuilt(ProxyRows &rows)
{
    if (rows.isBuilt)
        return;
    if (rows.above)
        ensureBuilt(*rows.above);
    if (!rows.isBuilt) // building the rows above may have looked at these
        build(rows);
}

void ProxyMapping::build(ProxyRows &rows)
{
    if (!rows.isJudged)
        judge(rows);
    rows.isBuilt = true;
    rows.isJudged = false;
    arrange(rows);
}

void ProxyMapping::judge(ProxyRows &rows)
{
    const QModelIndex parent = sourceParent(rows);
    rows.isWithin = rows.above && isWithin(*rows.above, rows.row);
    forgetUntrueBelow(rows);
    const int count = m_source->rowCount(parent);
    QVector<int> places(count);
    bool hasAccepted = false;
    for (int row = 0; row < count; ++row) {
        const bool isAccepted = accepts(rows, row, parent);
        hasAccepted = hasAccepted || isAccepted;
        places[row] = isAccepted ? 0 : ProxyRows::Hidden;
    }
    rows.places = places;
    rows.hasAccepted = hasAccepted;
    rows.isJudged = true;
}

/// Lists below were built while these rows were not: what was accepted for a row's sake may not be now.
void ProxyMapping::forgetUntrueBelow(ProxyRows &rows)
{
    for (auto &[row, below] : rows.below) {
        if ((below->isBuilt || below->isJudged) && below->isWithin != isWithin(rows, row))
            visit(*below, [](ProxyRows &each) { each.forget(); });
    }
}

bool ProxyMapping::areLeaves(ProxyRows &rows) const
{
    if (rows.leaves == ProxyRows::Leaves::Unknown) {
        rows.leaves = ProxyRows::Leaves::All;
        checkLeaves(rows, 0, rows.places.size() - 1);
    }
    return rows.leaves == ProxyRows::Leaves::All;
}

/// Some of the rows are new, or may have got children.
void ProxyMapping::checkLeaves(ProxyRows &rows, int first, int last) const
{
    if (rows.leaves == ProxyRows::Leaves::All && isAnyParent(rows, first, last))
        rows.leaves = ProxyRows::Leaves::NotAll;
}

bool ProxyMapping::isAnyParent(const ProxyRows &rows, int first, int last) const
{
    const QModelIndex parent = sourceParent(rows);
    for (int row = first; row <= last; ++row) {
        if (m_source->hasChildren(m_source->index(row, 0, parent)))
            return true;
    }
    return false;
}

void ProxyMapping::forgetUnseen(const QModelIndex &sourceParent)
{
    for (QModelIndex parent = sourceParent;; parent = parent.parent()) {
        ProxyRows *const rows = known(parent);
        if (rows && (!rows->isBuilt || !isShown(*rows)))
            rows->forget();
        if (!parent.isValid())
            return;
    }
}
