// What the proxy announces when rows of the source change, come and go.

#include "QNKSortFilterProxyModelPrivate.h"

#include <algorithm>

namespace {

/// More runs than these are announced as one new layout: every run costs its listeners a look at all rows.
constexpr int FewRuns = 32;

/// First and last of a run of places beside each other.
using Places = QPair<int, int>;

QVector<int> placesOf(const ProxyRows &rows, const QVector<int> &sourceRows)
{
    QVector<int> places;
    places.reserve(sourceRows.size());
    for (const int row : sourceRows) {
        if (rows.shows(row))
            places.append(rows.places[row]);
    }
    std::sort(places.begin(), places.end());
    return places;
}

/// @param places ascending
/// @return the runs from the top down
QVector<Places> runsOf(const QVector<int> &places)
{
    QVector<Places> runs;
    for (const int place : places) {
        if (runs.isEmpty() || runs.last().second + 1 != place)
            runs.append({place, place});
        else
            runs.last().second = place;
    }
    return runs;
}

} // namespace

/// The rows of a parent, where somebody can have seen them; null elsewhere.
ProxyRows *QNKSortFilterProxyModel::Private::seenRows(const QModelIndex &sourceParent) const
{
    ProxyRows *const rows = mapping.known(sourceParent);
    return rows && rows->isBuilt && ProxyMapping::isShown(*rows) ? rows : nullptr;
}

void QNKSortFilterProxyModel::Private::onDataChanged(const QModelIndex &topLeft,
                                                     const QModelIndex &bottomRight,
                                                     const QVector<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid())
        return;
    ++change;
    const QPersistentModelIndex parent = topLeft.parent();
    ProxyRows *const rows = seenRows(parent);
    if (!rows) {
        if (ProxyRows *const unseen = mapping.known(parent)) {
            unseen->isOrdered = false;
            unseen->leaves = ProxyRows::Leaves::Unknown;
        }
        mapping.forgetUnseen(parent);
        if (isDynamic)
            reconsiderFrom(parent);
        return;
    }
    const CellRange cells{topLeft.row(), bottomRight.row(), topLeft.column(), bottomRight.column()};
    QVector<int> kept;
    for (int row = cells.first; row <= cells.last; ++row) {
        if (rows->shows(row))
            kept.append(row);
    }
    if (!isDynamic)
        rows->leaves = ProxyRows::Leaves::Unknown;
    if (isDynamic && !refresh(parent, *rows, cells.first, cells.last))
        tellAll(parent, roles);
    else
        tellKept(parent, kept, cells, roles);
}

/// Filters and sorts rows whose data changed.
bool QNKSortFilterProxyModel::Private::refresh(const QModelIndex &sourceParent, ProxyRows &rows, int first,
                                               int last)
{
    const quint64 before = change;
    const bool inOrder = mapping.checkOrder(rows, first, last);
    for (int row = first; row <= last && !rows.below.empty(); ++row) {
        if (mapping.isWithinChanged(rows, row)) {
            layOutAnew();
            return change == before;
        }
    }
    QVector<int> gone;
    QVector<int> come;
    for (int row = first; row <= last; ++row) {
        if (mapping.accepts(rows, row) != rows.shows(row))
            (rows.shows(row) ? gone : come).append(row);
    }
    if (!changeShown(rows, gone, come, inOrder))
        return false;
    if (!gone.isEmpty() || !come.isEmpty())
        reconsiderFrom(sourceParent);
    return change == before;
}

bool QNKSortFilterProxyModel::Private::changeShown(ProxyRows &rows, const QVector<int> &gone,
                                                   const QVector<int> &come, bool inOrder)
{
    const QVector<Places> goneRuns = runsOf(placesOf(rows, gone));
    const bool isFew = goneRuns.size() <= FewRuns && come.size() <= rows.places.size()
                       && ProxyMapping::runsToShow(rows, come).size() <= FewRuns;
    if (inOrder && isFew) {
        const bool isTrue = hideRuns(rows, goneRuns) && showRows(rows, come);
        if (!isTrue)
            layOutAnew();
        return isTrue;
    }
    const quint64 before = change;
    layOut([&] {
        for (const int row : gone)
            rows.places[row] = ProxyRows::Hidden;
        for (const int row : come)
            rows.places[row] = 0;
        mapping.arrange(rows);
    });
    return change == before;
}

bool QNKSortFilterProxyModel::Private::hideRuns(ProxyRows &rows, const QVector<Places> &runs)
{
    const quint64 before = change;
    for (auto run = runs.crbegin(); run != runs.crend() && change == before; ++run) {
        q->beginRemoveRows(proxyParent(rows), run->first, run->second);
        ProxyMapping::hide(rows, run->first, run->second);
        q->endRemoveRows();
    }
    return change == before;
}

bool QNKSortFilterProxyModel::Private::showRows(ProxyRows &rows, const QVector<int> &sourceRows)
{
    const quint64 before = change;
    const QVector<ProxyMapping::Run> runs = ProxyMapping::runsToShow(rows, sourceRows);
    for (auto run = runs.crbegin(); run != runs.crend() && change == before; ++run) {
        q->beginInsertRows(proxyParent(rows), run->first, run->first + run->second.size() - 1);
        ProxyMapping::show(rows, *run);
        q->endInsertRows();
    }
    return change == before;
}

/// Rows below changed: whether their parent is shown, and its parent, may have changed with them.
void QNKSortFilterProxyModel::Private::reconsiderFrom(const QModelIndex &sourceIndex)
{
    if (!mapping.isRecursive)
        return;
    for (QPersistentModelIndex at = sourceIndex; at.isValid(); at = at.parent()) {
        ProxyRows *const rows = seenRows(at.parent());
        if (!rows)
            continue;
        const bool isAccepted = mapping.accepts(*rows, at.row());
        if (isAccepted == rows->shows(at.row()))
            return;
        const int place = rows->places[at.row()];
        const bool isTrue = isAccepted ? showRows(*rows, {at.row()}) : hideRuns(*rows, {{place, place}});
        if (!isTrue)
            return layOutAnew();
    }
}

/// Tells the data of rows that stayed.
void QNKSortFilterProxyModel::Private::tellKept(const QModelIndex &sourceParent, const QVector<int> &kept,
                                                const CellRange &cells, const QVector<int> &roles)
{
    ProxyRows *const rows = mapping.rows(sourceParent);
    QVector<Places> runs = rows ? runsOf(placesOf(*rows, kept)) : QVector<Places>();
    if (runs.size() > FewRuns)
        runs = {{runs.first().first, runs.last().second}};
    const quint64 before = change;
    for (const Places &run : qAsConst(runs)) {
        Q_EMIT q->dataChanged(indexOf(*rows, run.first, cells.left), indexOf(*rows, run.second, cells.right),
                              roles);
        if (change != before)
            return tellAll(sourceParent, roles);
    }
}

/// The rows have changed again meanwhile: which of them the data was of is not known any more.
void QNKSortFilterProxyModel::Private::tellAll(const QModelIndex &sourceParent, const QVector<int> &roles)
{
    const ProxyRows *const rows = mapping.rows(sourceParent);
    if (rows && !rows->shown.isEmpty()) {
        const int columns = q->columnCount(proxyParent(*rows));
        Q_EMIT q->dataChanged(indexOf(*rows, 0, 0), indexOf(*rows, rows->shown.size() - 1, columns - 1),
                              roles);
    }
}

void QNKSortFilterProxyModel::Private::onRowsInserted(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *rows = mapping.known(parent);
    if (ProxyRows *const among = parent.isValid() ? mapping.known(parent.parent()) : nullptr)
        among->leaves = ProxyRows::Leaves::NotAll;
    if (!mapping.isParentShown(parent)) {
        if (rows)
            mapping.insertSourceRows(*rows, first, last - first + 1);
        mapping.forgetUnseen(parent);
        reconsiderFrom(parent);
        return;
    }
    QVector<int> come;
    bool inOrder = true;
    if (rows && rows->isBuilt) {
        inOrder = mapping.insertSourceRows(*rows, first, last - first + 1);
        for (int row = first; row <= last; ++row) {
            if (mapping.accepts(*rows, row))
                come.append(row);
        }
    } else {
        // Nobody has asked for these rows yet, and whoever listens is told of all of them.
        if (rows)
            mapping.insertSourceRows(*rows, first, last - first + 1);
        rows = mapping.rows(parent);
        come = rows->shown;
        mapping.hideAll(*rows);
    }
    if (changeShown(*rows, {}, come, inOrder))
        reconsiderFrom(parent);
}

void QNKSortFilterProxyModel::Private::onRowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *const rows = seenRows(parent);
    if (!rows)
        return;
    QVector<int> gone;
    for (int row = first; row <= last; ++row) {
        if (rows->shows(row))
            gone.append(row);
    }
    const QVector<Places> runs = runsOf(placesOf(*rows, gone));
    m_removesInLayout = runs.size() > FewRuns;
    if (!m_removesInLayout) {
        hideRuns(*rows, runs);
        return;
    }
    Q_EMIT q->layoutAboutToBeChanged();
    saveMoving();
}

void QNKSortFilterProxyModel::Private::onRowsRemoved(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *const rows = mapping.known(parent);
    const bool inOrder = !rows || mapping.removeSourceRows(*rows, first, last - first + 1);
    if (m_removesInLayout) {
        m_removesInLayout = false;
        mapping.arrange(*rows);
        restore();
        Q_EMIT q->layoutChanged();
    } else if (!inOrder && seenRows(parent)) {
        layOut([&] { mapping.arrange(*rows); });
    }
    mapping.forgetUnseen(parent);
    reconsiderFrom(parent);
}
