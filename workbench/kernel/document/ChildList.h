#pragma once

#include "SlotList.h"

#include <utility>
#include <vector>

namespace kernel {

/// What the order of siblings is kept by: lower ones stand before higher ones.
using Rank = quint64;

/// Between the ranks of neighbours that were never moved there is at least this much room.
constexpr Rank RankStep = Rank(1) << 31;

/// The objects below one parent, or the top level, in the order of their ranks. No two of them have the same
/// rank, but for moments while many are moved. What comes back by undo with its rank finds its old place by
/// itself.
///
/// Adding and removing cost O(log n) wherever it happens; the list is brought into order again at the next
/// reading, once for all changes in between.
class NK_KERNEL_SERVICES_EXPORT ChildList
{
public:
    int size() const { return m_slots.size() - m_removed + int(m_returned.size()); }
    bool isEmpty() const { return size() == 0; }
    /// All of them, in order. The reference is true until the list changes.
    const QVector<Slot> &slots() const
    {
        if (m_removed > 0 || !m_returned.empty()) {
            settle();
        }
        return m_slots;
    }
    /// The rank of the last; 0 where there is none.
    Rank lastRank() const { return slots().isEmpty() ? 0 : m_ranks.constLast(); }

    /// Adds a slot that is not in the list.
    /// @param rank above 0
    void insert(Slot slot, Rank rank);
    /// Takes out a slot that is in the list with this rank.
    void remove(Slot slot, Rank rank);

private:
    void settle() const;
    void dropRemoved() const;
    void mergeReturned() const;
    int indexOf(Slot slot, Rank rank) const;

    /// Ordered by rank; removed ones stand there with a mark.
    mutable QVector<Slot> m_slots;
    /// Of the slot at the same index; ascending.
    mutable QVector<Rank> m_ranks;
    /// In any order; to be merged.
    mutable std::vector<std::pair<Rank, Slot>> m_returned;
    mutable int m_removed = 0;
};

} // namespace kernel
