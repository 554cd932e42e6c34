#pragma once

#include "RowId.h"

#include <QHash>

#include <vector>

/// Finds the slot of a row id. Numbers lie in one flat table of 12 bytes an entry (open addressing, linear
/// probing, never more than two thirds full); only ids beyond 64 bits pay for a hash of texts. Entries are
/// never taken out: a slot stays with its id as long as the model lives.
class SlotTable
{
public:
    bool isEmpty() const { return m_used == 0 && m_texts.isEmpty(); }
    /// Makes room for so many numbers in all, so that filling does not rehash.
    void reserve(int count);
    /// The slot of id; -1 where it has none, and for the null id.
    int slot(const RowId &id) const;
    /// Gives id a slot where it has none yet; the null id is ignored.
    /// @return the slot that id has now; -1 for the null id
    int insert(const RowId &id, int slot);
    void clear();

private:
    size_t place(quint64 number) const;
    void grow(size_t capacity);

    std::vector<quint64> m_numbers;
    std::vector<int> m_slots; // -1: the place is free
    size_t m_used = 0;
    QHash<QString, int> m_texts;
};
