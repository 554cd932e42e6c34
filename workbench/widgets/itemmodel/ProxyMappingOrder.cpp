// The part of ProxyMapping that keeps the order of rows, and what is shown in that order.

#include "ProxyMapping.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <numeric>

namespace {

/// Up to so many rows are put in order one by one; more are sorted together.
constexpr int FewRows = 64;

void shiftValues(QVector<int> &rows, int from, int by)
{
    for (int &row : rows)
        row += row >= from ? by : 0;
}

void shiftBelow(ProxyRows &rows, int from, int by)
{
    std::unordered_map<int, std::unique_ptr<ProxyRows>> shifted;
    for (auto &[row, below] : rows.below) {
        below->row += row >= from ? by : 0;
        const int now = below->row;
        shifted.emplace(now, std::move(below));
    }
    rows.below = std::move(shifted);
}

} // namespace

void ProxyMapping::makeOrder(ProxyRows &rows) const
{
    const bool sorts = order.sorts(m_source);
    if (rows.isOrdered && rows.order.size() == (sorts ? rows.places.size() : 0))
        return;
    rows.order.resize(sorts ? rows.places.size() : 0);
    if (sorts) {
        std::iota(rows.order.begin(), rows.order.end(), 0);
        order.sort(m_judge, m_source, sourceParent(rows), rows.order);
    }
    rows.isOrdered = true;
}

void ProxyMapping::arrange(ProxyRows &rows)
{
    makeOrder(rows);
    rows.shown.clear();
    for (int place = 0; place < rows.places.size(); ++place) {
        const int row = rows.order.isEmpty() ? place : rows.order[place];
        if (!rows.shows(row))
            continue;
        rows.places[row] = rows.shown.size();
        rows.shown.append(row);
    }
}

// Rows that come and go ---------------------------------------------------------------------------------

bool ProxyMapping::insertSourceRows(ProxyRows &rows, int first, int count)
{
    shiftBelow(rows, first, count);
    if (!rows.isBuilt) {
        rows.isOrdered = rows.isJudged = false;
        rows.leaves = ProxyRows::Leaves::Unknown;
        return true;
    }
    checkLeaves(rows, first, first + count - 1);
    shiftValues(rows.shown, first, count);
    rows.places.insert(first, count, ProxyRows::Hidden);
    if (!order.sorts(m_source))
        return true;
    if (count > FewRows)
        return sortRows(rows);
    shiftValues(rows.order, first, count);
    for (int row = first; row < first + count; ++row)
        putInOrder(rows, row);
    return true;
}

bool ProxyMapping::removeSourceRows(ProxyRows &rows, int first, int count)
{
    for (int row = first; row < first + count; ++row)
        rows.below.erase(row);
    shiftBelow(rows, first, -count);
    if (!rows.isBuilt) {
        rows.isOrdered = rows.isJudged = false;
        return true;
    }
    const auto isGone = [=](int row) { return row >= first && row < first + count; };
    rows.shown.erase(std::remove_if(rows.shown.begin(), rows.shown.end(), isGone), rows.shown.end());
    shiftValues(rows.shown, first, -count);
    rows.places.remove(first, count);
    renumber(rows, 0);
    return rows.order.isEmpty() || removeFromOrder(rows, first, count) || sortRows(rows);
}

/// @return whether every pair of rows that are neighbours now is in order
bool ProxyMapping::removeFromOrder(ProxyRows &rows, int first, int count) const
{
    QVector<int> left;
    left.reserve(rows.places.size());
    bool isTrue = true;
    bool isNewPair = false;
    for (const int row : qAsConst(rows.order)) {
        if (row >= first && row < first + count) {
            isNewPair = true;
            continue;
        }
        left.append(row < first ? row : row - count);
        if (isNewPair && left.size() > 1)
            isTrue = isTrue && isInOrder(rows, left[left.size() - 2], left.last());
        isNewPair = false;
    }
    rows.order = left;
    return isTrue;
}

void ProxyMapping::hideAll(ProxyRows &rows)
{
    rows.shown.clear();
    rows.places.fill(ProxyRows::Hidden);
}

/// @return whether what is shown stands in that order
bool ProxyMapping::sortRows(ProxyRows &rows) const
{
    rows.isOrdered = false;
    makeOrder(rows);
    int place = 0;
    for (const int row : qAsConst(rows.order)) {
        if (rows.shows(row) && rows.places[row] != place++)
            return false;
    }
    return true;
}

bool ProxyMapping::isInOrder(const ProxyRows &rows, int upper, int lower) const
{
    return order.isBefore(m_judge, m_source, sourceParent(rows), upper, lower);
}

// Rows change one after the other, and their neighbours may hold data that is not announced yet. So what is kept
// true is this: of two rows beside each other that both were announced, the upper one stands before the lower
// one. After the last announcement the whole list is in order then. Hence the look at the pair that a row
// leaves behind.

void ProxyMapping::putInOrder(ProxyRows &rows, int row) const
{
    const QModelIndex parent = sourceParent(rows);
    const auto place = std::lower_bound(rows.order.begin(), rows.order.end(), row, [&](int left, int right) {
        return order.isBefore(m_judge, m_source, parent, left, right);
    });
    rows.order.insert(place, row);
}

bool ProxyMapping::checkOrder(ProxyRows &rows, int first, int last)
{
    checkLeaves(rows, first, last);
    if (rows.order.isEmpty())
        return true;
    if (last - first + 1 > FewRows)
        return sortRows(rows);
    bool isTrue = true;
    for (int row = first; row <= last; ++row)
        isTrue = checkOrderOf(rows, row) && isTrue;
    return isTrue;
}

bool ProxyMapping::checkOrderOf(ProxyRows &rows, int row) const
{
    const int place = orderPlace(rows, row);
    const int upper = place > 0 ? rows.order[place - 1] : -1;
    const int lower = place + 1 < rows.order.size() ? rows.order[place + 1] : -1;
    if ((upper < 0 || isInOrder(rows, upper, row)) && (lower < 0 || isInOrder(rows, row, lower)))
        return true;
    rows.order.remove(place);
    putInOrder(rows, row);
    if (upper >= 0 && lower >= 0 && !isInOrder(rows, upper, lower))
        sortRows(rows);
    return false;
}

int ProxyMapping::orderPlace(const ProxyRows &rows, int sourceRow)
{
    if (rows.order.isEmpty())
        return sourceRow;
    const int guess = rows.places[sourceRow]; // right while nothing is hidden
    if (guess != ProxyRows::Hidden && rows.order[guess] == sourceRow)
        return guess;
    return rows.order.indexOf(sourceRow);
}

QVector<ProxyMapping::Run> ProxyMapping::runsToShow(const ProxyRows &rows, const QVector<int> &sourceRows)
{
    QVector<int> orderPlaces;
    if (rows.order.isEmpty()) {
        orderPlaces = sourceRows;
        std::sort(orderPlaces.begin(), orderPlaces.end());
    } else {
        QVector<bool> isAsked(rows.places.size(), false);
        for (const int row : sourceRows)
            isAsked[row] = true;
        for (int place = 0; place < rows.order.size(); ++place) {
            if (isAsked[rows.order[place]])
                orderPlaces.append(place);
        }
    }
    QVector<Run> runs;
    int settled = -1; // up to here in the order every hidden row stands in the last run
    for (const int at : qAsConst(orderPlaces)) {
        const auto rowAt = [&](int place) { return rows.order.isEmpty() ? place : rows.order[place]; };
        int above = at - 1;
        while (above > settled && !rows.shows(rowAt(above)))
            --above;
        if (above > settled || runs.isEmpty())
            runs.append(Run(above < 0 ? 0 : rows.places[rowAt(above)] + 1, {}));
        runs.last().second.append(rowAt(at));
        settled = at;
    }
    return runs;
}

void ProxyMapping::show(ProxyRows &rows, const Run &run)
{
    const QVector<int> &added = run.second;
    rows.shown.insert(run.first, added.size(), 0);
    std::copy(added.cbegin(), added.cend(), rows.shown.begin() + run.first);
    renumber(rows, run.first);
}

void ProxyMapping::hide(ProxyRows &rows, int first, int last)
{
    for (int place = first; place <= last; ++place)
        rows.places[rows.shown[place]] = ProxyRows::Hidden;
    rows.shown.remove(first, last - first + 1);
    renumber(rows, first);
}

void ProxyMapping::renumber(ProxyRows &rows, int first)
{
    for (int place = first; place < rows.shown.size(); ++place)
        rows.places[rows.shown[place]] = place;
}
