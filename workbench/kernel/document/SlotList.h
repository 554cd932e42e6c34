#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QVector>

namespace kernel {

/// The address of an object, set or entry inside the document: its id less the first id of the scene.
using Slot = quint32;
constexpr Slot NoSlot = 0xffffffffu;

/// Slots in ascending order: the entries of a set, the sets of a scene. What is made
/// later has the higher slot and stands behind, so the order is also the order of creation, and what
/// comes back by undo finds its old place by itself.
///
/// Adding and removing cost O(log n) wherever it happens; the list is brought into order again at the next
/// reading, once for all changes in between.
class NK_KERNEL_SERVICES_EXPORT SlotList
{
public:
    int size() const { return m_count; }
    bool isEmpty() const { return size() == 0; }
    Slot at(int index) const { return slots().at(index); }
    /// All of them, in order. The reference is true until the list changes.
    const QVector<Slot> &slots() const
    {
        if (m_removed > 0 || !m_returned.isEmpty()) {
            settle();
        }
        return m_slots;
    }

    void reserve(int size) { m_slots.reserve(size); }
    /// Adds a slot that is not in the list.
    void insert(Slot slot);
    /// Takes out a slot that is in the list.
    void remove(Slot slot);

private:
    void settle() const;
    int indexOf(Slot slot) const;

    /// Ascending but for the mark of removed ones.
    mutable QVector<Slot> m_slots;
    /// In any order; to be merged.
    mutable QVector<Slot> m_returned;
    mutable int m_removed = 0;
    /// By itself, because whoever asks a list whether it is empty asks many of them.
    int m_count = 0;
};

} // namespace kernel
