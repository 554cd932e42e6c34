#pragma once

#include "SlotList.h"
#include "Store.h"

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QList>
#include <QSet>
#include <QVector>

namespace kernel {

/// The slots of those of the handles that slotOf answers, each once, in order.
/// @param slotOf from an id to a slot; NoSlot for what is to be skipped
template <typename Handle, typename SlotOf>
QVector<Slot> slotsOf(const QList<Handle> &handles, SlotOf slotOf)
{
    QVector<Slot> slots;
    QSet<Slot> known;
    for (const Handle &handle : handles) {
        const Slot slot = slotOf(handle.getObjectId());
        if (slot != NoSlot && !known.contains(slot)) {
            known.insert(slot);
            slots.append(slot);
        }
    }
    return slots;
}

/// The living scene objects among the handles.
template <typename Handle>
QVector<Slot> objectSlots(const Store &store, const QList<Handle> &handles)
{
    return slotsOf(handles, [&store](quint64 id) { return store.objectSlot(id); });
}

/// The living sets among the handles, object sets too.
QVector<Slot> setSlots(const Store &store, const QList<nkdMetadataSet> &sets);
/// The living shared sets among the handles.
QVector<Slot> sharedSetSlots(const Store &store, const QList<nkdMetadataSet> &sets);

QList<nkdMetadataSet> setHandles(const Store &store, const QVector<Slot> &sets);
QList<nkdSceneObject> objectHandles(const Store &store, const QVector<Slot> &objects);

} // namespace kernel
