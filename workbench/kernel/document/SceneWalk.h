#pragma once

#include "SlotList.h"

#include <nkKernelServices/nkObjectType.h>

#include <QVector>

namespace kernel {

class Store;

/// Reads objects in scene order: depth first, parents before their children. Works at any depth.
class SceneWalk
{
public:
    explicit SceneWalk(const Store &store) : m_store(store) {}

    /// Every living object of exactly this kind; none for kinds that are no scene objects.
    QVector<Slot> objects(nkObjectType kind) const;

private:
    QVector<Slot> below(const QVector<Slot> &topLevel, nkObjectType kind) const;

    const Store &m_store;
};

} // namespace kernel
