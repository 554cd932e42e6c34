#include "HandleLists.h"

namespace kernel {

QVector<Slot> setSlots(const Store &store, const QList<nkdMetadataSet> &sets)
{
    return slotsOf(sets, [&store](quint64 id) { return store.setSlot(id); });
}

QVector<Slot> sharedSetSlots(const Store &store, const QList<nkdMetadataSet> &sets)
{
    return slotsOf(sets, [&store](quint64 id) {
        const Slot slot = store.setSlot(id);
        return slot != NoSlot && store.set(slot).owner == NoSlot ? slot : NoSlot;
    });
}

QList<nkdMetadataSet> setHandles(const Store &store, const QVector<Slot> &sets)
{
    QList<nkdMetadataSet> handles;
    handles.reserve(sets.size());
    for (const Slot set : sets) {
        handles.append(nkdMetadataSet(store.idOf(set)));
    }
    return handles;
}

QList<nkdSceneObject> objectHandles(const Store &store, const QVector<Slot> &objects)
{
    QList<nkdSceneObject> handles;
    handles.reserve(objects.size());
    for (const Slot object : objects) {
        handles.append(nkdSceneObject(nkdObject(store.idOf(object), store.object(object).type)));
    }
    return handles;
}

} // namespace kernel
