#include "SlotList.h"

#include <algorithm>

namespace kernel {

namespace {

/// Set on slots that were removed and still stand in the list. Slots stay far below it.
constexpr Slot RemovedMark = 0x80000000u;

Slot plain(Slot slot)
{
    return slot & ~RemovedMark;
}

} // namespace

void SlotList::insert(Slot slot)
{
    ++m_count;
    if (m_slots.isEmpty() || plain(m_slots.constLast()) < slot) {
        m_slots.append(slot);
        return;
    }
    const int index = indexOf(slot);
    if (index < 0) {
        m_returned.append(slot);
        return;
    }
    m_slots[index] = slot;
    --m_removed;
}

void SlotList::remove(Slot slot)
{
    --m_count;
    if (!m_slots.isEmpty() && m_slots.constLast() == slot) {
        m_slots.removeLast();
        return;
    }
    int index = indexOf(slot);
    if (index < 0) {
        settle();
        index = indexOf(slot);
    }
    Q_ASSERT(index >= 0 && m_slots.at(index) == slot);
    m_slots[index] |= RemovedMark;
    ++m_removed;
}

int SlotList::indexOf(Slot slot) const
{
    const auto place = std::lower_bound(m_slots.cbegin(), m_slots.cend(), slot,
                                        [](Slot left, Slot right) { return plain(left) < right; });
    if (place == m_slots.cend() || plain(*place) != slot) {
        return -1;
    }
    return int(place - m_slots.cbegin());
}

void SlotList::settle() const
{
    const auto removed = [](Slot slot) { return (slot & RemovedMark) != 0; };
    m_slots.erase(std::remove_if(m_slots.begin(), m_slots.end(), removed), m_slots.end());
    m_removed = 0;
    if (m_returned.isEmpty()) {
        return;
    }
    std::sort(m_returned.begin(), m_returned.end());
    const int middle = m_slots.size();
    m_slots += m_returned;
    std::inplace_merge(m_slots.begin(), m_slots.begin() + middle, m_slots.end());
    m_returned.clear();
}

} // namespace kernel
