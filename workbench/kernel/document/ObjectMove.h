#pragma once

#include "Records.h"

#include <nkKernelServices/nkObjectType.h>

#include <QList>
#include <QSet>
#include <QVector>

namespace kernel {

class Store;

/// What it takes to move objects of a store: checked and worked out when it is made, carried out by others.
/// Document::moveObjects says what a move is.
class ObjectMove
{
public:
    struct Step
    {
        Slot object;
        ObjectPlace place;
    };

    ObjectMove(const Store &store, const QList<quint64> &ids, quint64 parentId, int position);

    /// False for what is refused and for what changes nothing.
    bool isChange() const { return !m_steps.isEmpty(); }
    const QVector<Step> &steps() const { return m_steps; }

private:
    bool takeObjects(const QList<quint64> &ids, quint64 parentId);
    bool isBelowAny(Slot object) const;
    QVector<Slot> topmost(const QVector<Slot> &objects) const;
    void placeAt(int position);
    bool placeBetween(Rank low, Rank high);
    void renumber(const QVector<Slot> &order);

    const Store &m_store;
    Slot m_parent;
    /// What moves, without what stands below others of it.
    QVector<Slot> m_objects;
    QSet<Slot> m_moving;
    QVector<Step> m_steps;
};

} // namespace kernel
