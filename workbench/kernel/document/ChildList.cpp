#include "ChildList.h"

#include <algorithm>

namespace kernel {

namespace {

/// Set on slots that were removed and still stand in the list. Slots stay far below it.
constexpr Slot RemovedMark = 0x80000000u;

} // namespace

void ChildList::insert(Slot slot, Rank rank)
{
    if (m_slots.isEmpty() || m_ranks.constLast() < rank) {
        m_slots.append(slot);
        m_ranks.append(rank);
        return;
    }
    const int index = indexOf(slot | RemovedMark, rank);
    if (index < 0) {
        m_returned.emplace_back(rank, slot);
        return;
    }
    m_slots[index] = slot;
    --m_removed;
}

void ChildList::remove(Slot slot, Rank rank)
{
    if (!m_slots.isEmpty() && m_slots.constLast() == slot) {
        m_slots.removeLast();
        m_ranks.removeLast();
        return;
    }
    int index = indexOf(slot, rank);
    if (index < 0) {
        settle();
        index = indexOf(slot, rank);
    }
    Q_ASSERT(index >= 0);
    m_slots[index] |= RemovedMark;
    ++m_removed;
}

/// While many are moved, a rank may be that of one that has left it and of one that has come to it.
int ChildList::indexOf(Slot slot, Rank rank) const
{
    const auto first = std::lower_bound(m_ranks.cbegin(), m_ranks.cend(), rank);
    for (auto place = first; place != m_ranks.cend() && *place == rank; ++place) {
        const int index = int(place - m_ranks.cbegin());
        if (m_slots.at(index) == slot) {
            return index;
        }
    }
    return -1;
}

void ChildList::settle() const
{
    dropRemoved();
    mergeReturned();
}

void ChildList::dropRemoved() const
{
    int kept = 0;
    for (int index = 0; index < m_slots.size() && m_removed > 0; ++index) {
        if ((m_slots.at(index) & RemovedMark) == 0) {
            m_slots[kept] = m_slots.at(index);
            m_ranks[kept] = m_ranks.at(index);
            ++kept;
        }
    }
    if (m_removed > 0) {
        m_slots.resize(kept);
        m_ranks.resize(kept);
        m_removed = 0;
    }
}

/// From the back, so that nothing is overwritten that is still to be moved up.
void ChildList::mergeReturned() const
{
    std::sort(m_returned.begin(), m_returned.end());
    int from = m_slots.size() - 1;
    m_slots.resize(m_slots.size() + int(m_returned.size()));
    m_ranks.resize(m_slots.size());
    for (int to = m_slots.size() - 1; !m_returned.empty(); --to) {
        if (from >= 0 && m_ranks.at(from) > m_returned.back().first) {
            m_slots[to] = m_slots.at(from);
            m_ranks[to] = m_ranks.at(from);
            --from;
        } else {
            m_slots[to] = m_returned.back().second;
            m_ranks[to] = m_returned.back().first;
            m_returned.pop_back();
        }
    }
}

} // namespace kernel
