#include "SlotTable.h"

namespace {
constexpr int Free = -1;
constexpr size_t SmallestCapacity = 16;

/// Spreads neighbouring ids, the usual case, over the table (Fibonacci hashing: 2^64 over the golden ratio).
size_t spread(quint64 number)
{
    const quint64 mixed = number * Q_UINT64_C(0x9E3779B97F4A7C15);
    return size_t(mixed ^ (mixed >> 32));
}
} // namespace

void SlotTable::reserve(int count)
{
    size_t capacity = SmallestCapacity;
    while (capacity * 2 < size_t(count) * 3)
        capacity *= 2;
    if (capacity > m_slots.size())
        grow(capacity);
}

int SlotTable::slot(const RowId &id) const
{
    if (id.isNull())
        return Free;
    if (!id.isNumber())
        return m_texts.value(id.text(), Free);
    return m_slots.empty() ? Free : m_slots[place(id.number())];
}

int SlotTable::insert(const RowId &id, int slot)
{
    if (id.isNull())
        return Free;
    if (!id.isNumber()) {
        auto found = m_texts.find(id.text());
        return found != m_texts.end() ? *found : *m_texts.insert(id.text(), slot);
    }
    if ((m_used + 1) * 3 > m_slots.size() * 2)
        grow(qMax(SmallestCapacity, m_slots.size() * 2));
    const size_t at = place(id.number());
    if (m_slots[at] == Free) {
        m_numbers[at] = id.number();
        m_slots[at] = slot;
        ++m_used;
    }
    return m_slots[at];
}

void SlotTable::clear()
{
    *this = SlotTable();
}

/// Where number stands, or the free place where it would. The capacity is a power of two and never full.
size_t SlotTable::place(quint64 number) const
{
    const size_t mask = m_slots.size() - 1;
    size_t at = spread(number) & mask;
    while (m_slots[at] != Free && m_numbers[at] != number)
        at = (at + 1) & mask;
    return at;
}

void SlotTable::grow(size_t capacity)
{
    const std::vector<quint64> numbers = std::move(m_numbers);
    const std::vector<int> slots = std::move(m_slots);
    m_numbers.assign(capacity, 0);
    m_slots.assign(capacity, Free);
    for (size_t i = 0; i < slots.size(); ++i) {
        if (slots[i] == Free)
            continue;
        const size_t at = place(numbers[i]);
        m_numbers[at] = numbers[i];
        m_slots[at] = slots[i];
    }
}
