#pragma once

#include "SlotList.h"
#include "SlotTable.h"

#include <nkKernelServices/nkKernelServicesExport.h>

namespace kernel {

/// Ids for everything that has one, the same for all scenes of the process: each is given out once, the first
/// is 1,000,000,000, and all have ten digits.
class NK_KERNEL_SERVICES_EXPORT IdSource
{
public:
    /// The id that take() gives next.
    static quint64 next();
    /// Takes count ids in a row.
    /// @return the first of them
    static quint64 take(quint32 count = 1);
};

/// The way from an id to its record: four bytes an id, no searching.
class NK_KERNEL_SERVICES_EXPORT SlotDirectory
{
public:
    enum class Kind : quint32 { Nothing = 0, Object = 1, Set = 2, Entry = 3 };

    /// For the ids from the next one on.
    SlotDirectory();

    /// The number of slots given out, gaps of ids taken by others included.
    quint32 slotCount() const { return m_cells.size(); }
    /// The slot of an id; NoSlot for ids that were never given out here.
    Slot slotOf(quint64 id) const
    {
        return id >= m_firstId && id - m_firstId < m_cells.size() ? Slot(id - m_firstId) : NoSlot;
    }
    quint64 idOf(Slot slot) const { return m_firstId + slot; }

    /// A new slot, with a new id, for the record of that kind and index; not alive yet.
    Slot add(Kind kind, quint32 index);

    Kind kindOf(Slot slot) const { return Kind(m_cells[slot] >> KindShift); }
    quint32 indexOf(Slot slot) const { return m_cells[slot] & IndexMask; }
    bool isAlive(Slot slot) const { return (m_cells[slot] & AliveBit) != 0; }
    void setAlive(Slot slot, bool alive)
    {
        m_cells[slot] = alive ? m_cells[slot] | AliveBit : m_cells[slot] & ~AliveBit;
    }

private:
    static constexpr quint32 KindShift = 30;
    static constexpr quint32 AliveBit = 1u << 29;
    static constexpr quint32 IndexMask = AliveBit - 1;

    const quint64 m_firstId;
    SlotTable<quint32> m_cells;
};

} // namespace kernel
