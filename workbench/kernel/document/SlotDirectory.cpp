#include "SlotDirectory.h"

namespace kernel {

namespace {

constexpr quint64 FirstId = Q_UINT64_C(1000000000);
constexpr quint64 LastId = Q_UINT64_C(9999999999);

/// Slots share their highest bit with the mark of SlotList.
constexpr quint32 MostSlots = 0x7fffffffu;

quint64 nextId = FirstId;

} // namespace

quint64 IdSource::next()
{
    return nextId;
}

quint64 IdSource::take(quint32 count)
{
    if (count > LastId - nextId) {
        qFatal("No ids are left in this process");
    }
    const quint64 first = nextId;
    nextId += count;
    return first;
}

SlotDirectory::SlotDirectory() : m_firstId(IdSource::next()) {}

Slot SlotDirectory::add(Kind kind, quint32 index)
{
    const quint64 id = IdSource::take();
    if (index > IndexMask || id - m_firstId >= MostSlots) {
        qFatal("The scene holds more objects and entries than can be addressed");
    }
    while (m_cells.size() < id - m_firstId) {
        m_cells.append(quint32(Kind::Nothing) << KindShift);
    }
    return m_cells.append((quint32(kind) << KindShift) | index);
}

} // namespace kernel
