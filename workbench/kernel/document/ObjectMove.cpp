#include "ObjectMove.h"

#include "ObjectOperations.h"
#include "Store.h"

#include <algorithm>
#include <limits>

namespace kernel {

ObjectMove::ObjectMove(const Store &store, const QList<quint64> &ids, quint64 parentId, int position)
    : m_store(store), m_parent(store.objectSlot(parentId))
{
    if (takeObjects(ids, parentId)) {
        placeAt(position);
    }
}

/// @return false where anything forbids the move
bool ObjectMove::takeObjects(const QList<quint64> &ids, quint64 parentId)
{
    QVector<Slot> objects;
    for (const quint64 id : ids) {
        const Slot slot = m_store.objectSlot(id);
        if (slot == NoSlot || m_store.object(slot).locked
            || !fitsBelow(m_store, m_store.object(slot).type, parentId)) {
            return false;
        }
        if (!m_moving.contains(slot)) {
            m_moving.insert(slot);
            objects.append(slot);
        }
    }
    if (m_parent != NoSlot && (m_moving.contains(m_parent) || isBelowAny(m_parent))) {
        return false;
    }
    m_objects = topmost(objects);
    return !m_objects.isEmpty();
}

bool ObjectMove::isBelowAny(Slot object) const
{
    Slot above = m_store.object(object).place.parent;
    while (above != NoSlot && !m_moving.contains(above)) {
        above = m_store.object(above).place.parent;
    }
    return above != NoSlot;
}

/// Those with none of the others above them. Every line upwards is walked once, however many share it.
QVector<Slot> ObjectMove::topmost(const QVector<Slot> &objects) const
{
    QVector<Slot> top;
    QHash<Slot, bool> isInside{{NoSlot, false}};
    for (const Slot object : objects) {
        QVector<Slot> line;
        Slot above = m_store.object(object).place.parent;
        while (!isInside.contains(above) && !m_moving.contains(above)) {
            line.append(above);
            above = m_store.object(above).place.parent;
        }
        const bool inside = isInside.value(above, true);
        for (const Slot slot : qAsConst(line)) {
            isInside.insert(slot, inside);
        }
        if (!inside) {
            top.append(object);
        }
    }
    return top;
}

void ObjectMove::placeAt(int position)
{
    const QSet<Slot> moving(m_objects.cbegin(), m_objects.cend());
    const QVector<Slot> present =
        m_store.childrenBelow(m_parent, m_store.object(m_objects.first()).type).slots();
    const int place = position < 0 ? present.size() : std::min(position, present.size());
    QVector<Slot> order;
    order.reserve(present.size() + m_objects.size());
    const auto stays = [&moving](Slot slot) { return !moving.contains(slot); };
    std::copy_if(present.cbegin(), present.cbegin() + place, std::back_inserter(order), stays);
    const int first = order.size();
    order += m_objects;
    std::copy_if(present.cbegin() + place, present.cend(), std::back_inserter(order), stays);
    if (order == present) {
        return;
    }
    const int behind = first + m_objects.size();
    const Rank low = first > 0 ? m_store.object(order.at(first - 1)).place.rank : 0;
    const Rank high = behind < order.size() ? m_store.object(order.at(behind)).place.rank : 0;
    if (!placeBetween(low, high)) {
        renumber(order);
    }
}

/// @param high 0 where nothing follows
/// @return false where there are not enough ranks between these
bool ObjectMove::placeBetween(Rank low, Rank high)
{
    const Rank parts = Rank(m_objects.size()) + 1;
    const Rank end = high > 0 ? high : std::numeric_limits<Rank>::max();
    const Rank step = high > 0 ? (end - low) / parts : RankStep;
    if (step == 0 || (end - low) / parts < step) {
        return false;
    }
    for (int index = 0; index < m_objects.size(); ++index) {
        m_steps.append(Step{m_objects.at(index), {m_parent, low + step * Rank(index + 1)}});
    }
    return true;
}

void ObjectMove::renumber(const QVector<Slot> &order)
{
    for (int index = 0; index < order.size(); ++index) {
        m_steps.append(Step{order.at(index), {m_parent, RankStep * Rank(index + 1)}});
    }
}

} // namespace kernel
