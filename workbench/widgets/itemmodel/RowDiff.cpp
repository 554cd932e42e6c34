#include "RowDiff.h"

#include "SlotTable.h"

#include <nkQt4Ext/QNKModelItem.h>

#include <functional>

namespace {
bool isSameRow(const QNKModelItem *before, const QNKModelItem *after)
{
    return before == after || RowId(before->getId()).isSameAs(RowId(after->getId()));
}

/// The ranges of positions 0..count-1 that marked names.
RowDiff::Ranges rangesOf(int count, const std::function<bool(int)> &marked)
{
    RowDiff::Ranges ranges;
    for (int i = 0; i < count; ++i) {
        if (!marked(i))
            continue;
        if (!ranges.isEmpty() && ranges.last().second == i - 1)
            ranges.last().second = i;
        else
            ranges.append({i, i});
    }
    return ranges;
}
} // namespace

RowDiff RowDiff::between(const QVector<QNKModelItem *> &before, const QVector<QNKModelItem *> &after)
{
    RowDiff diff;
    diff.beforeCount = before.size();
    diff.origin.fill(-1, after.size());
    const int shorter = qMin(before.size(), after.size());
    int head = 0;
    for (; head < shorter && isSameRow(before[head], after[head]); ++head)
        diff.origin[head] = head;
    int tail = 0;
    while (tail < shorter - head
           && isSameRow(before[before.size() - 1 - tail], after[after.size() - 1 - tail])) {
        ++tail;
        diff.origin[after.size() - tail] = before.size() - tail;
    }

    // Only what lies between needs a search: most reloads change little, and in one place.
    const int beforeEnd = before.size() - tail;
    const int afterEnd = after.size() - tail;
    SlotTable positions;
    if (head < afterEnd) {
        positions.reserve(beforeEnd - head);
        for (int i = head; i < beforeEnd; ++i)
            positions.insert(RowId(before[i]->getId()), i);
    }
    QVector<bool> taken(before.size(), false);
    for (int i = 0; i < before.size(); ++i)
        taken[i] = i < head || i >= beforeEnd;
    int last = head - 1;
    for (int i = head; i < afterEnd; ++i) {
        const bool kept = after[i]->m_slot >= 0; // a row object of before, handed back
        const int at = kept ? after[i]->m_row : positions.slot(RowId(after[i]->getId()));
        if (at < 0 || taken[at])
            continue;
        taken[at] = true;
        diff.origin[i] = at;
        diff.reordered = diff.reordered || at < last;
        last = at;
    }
    diff.removed = rangesOf(before.size(), [&taken](int i) { return !taken[i]; });
    diff.inserted = rangesOf(after.size(), [&diff](int i) { return diff.origin[i] < 0; });
    diff.common = int(taken.count(true));
    return diff;
}

void RowDiff::makeDisjoint(int before, int after)
{
    *this = RowDiff();
    beforeCount = before;
    origin.fill(-1, after);
    if (before > 0)
        removed.append({0, before - 1});
    if (after > 0)
        inserted.append({0, after - 1});
}
