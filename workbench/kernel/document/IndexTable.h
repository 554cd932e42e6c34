#pragma once

#include <QtGlobal>

#include <vector>

namespace kernel {

/// Spreads a number over all bits: what the tables below take as a hash.
inline quint32 mixedHash(quint64 number)
{
    // The finaliser of SplitMix64 (Steele, Lea, Flood 2014).
    number = (number ^ (number >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
    number = (number ^ (number >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
    return quint32(number >> 32) ^ quint32(number);
}

/// A hash table of 32-bit numbers whose keys lie elsewhere: finds the record of a key at 4 to 12 bytes a
/// record. Open addressing with linear probing; removal closes the gap, so there are no tombstones.
///
/// HashOf answers the hash of a stored number's key; Matches whether a stored number has the key looked for.
class IndexTable
{
public:
    static constexpr quint32 None = 0xffffffffu;

    quint32 size() const { return m_size; }

    /// @return the stored number with this hash for which matches holds; None where there is none
    template <typename Matches>
    quint32 find(quint32 hash, Matches matches) const
    {
        if (m_cells.empty()) {
            return None;
        }
        for (quint32 cell = hash & mask(); m_cells[cell] != None; cell = (cell + 1) & mask()) {
            if (matches(m_cells[cell])) {
                return m_cells[cell];
            }
        }
        return None;
    }

    /// Adds a number whose key is not in the table.
    template <typename HashOf>
    void insert(quint32 number, HashOf hashOf)
    {
        if (3 * (m_size + 1) > 2 * m_cells.size()) {
            grow(hashOf);
        }
        place(number, hashOf(number));
        ++m_size;
    }

    /// Takes out a number that is in the table; its key must still be the one it was added with.
    template <typename HashOf>
    void remove(quint32 number, HashOf hashOf)
    {
        quint32 hole = hashOf(number) & mask();
        while (m_cells[hole] != number) {
            Q_ASSERT(m_cells[hole] != None);
            hole = (hole + 1) & mask();
        }
        for (quint32 cell = (hole + 1) & mask(); m_cells[cell] != None; cell = (cell + 1) & mask()) {
            const quint32 home = hashOf(m_cells[cell]) & mask();
            if (((cell - home) & mask()) >= ((cell - hole) & mask())) {
                m_cells[hole] = m_cells[cell];
                hole = cell;
            }
        }
        m_cells[hole] = None;
        --m_size;
    }

private:
    static constexpr quint32 SmallestCapacity = 16;

    quint32 mask() const { return quint32(m_cells.size()) - 1; }

    void place(quint32 number, quint32 hash)
    {
        quint32 cell = hash & mask();
        while (m_cells[cell] != None) {
            cell = (cell + 1) & mask();
        }
        m_cells[cell] = number;
    }

    template <typename HashOf>
    void grow(HashOf hashOf)
    {
        std::vector<quint32> old(m_cells.empty() ? SmallestCapacity : 2 * m_cells.size(), None);
        old.swap(m_cells);
        for (const quint32 number : old) {
            if (number != None) {
                place(number, hashOf(number));
            }
        }
    }

    std::vector<quint32> m_cells;
    quint32 m_size = 0;
};

} // namespace kernel
