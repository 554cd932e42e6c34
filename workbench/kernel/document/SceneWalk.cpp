#include "SceneWalk.h"

#include "Store.h"

#include <algorithm>

namespace kernel {

QVector<Slot> SceneWalk::objects(nkObjectType kind) const
{
    switch (kind) {
    case nkObjectType::Node:
    case nkObjectType::Camera:
    case nkObjectType::Light:
    case nkObjectType::Sceneplate:
        return below(m_store.topLevelNodes().slots(), kind);
    case nkObjectType::MaterialGroup:
    case nkObjectType::Material:
        return below(m_store.topLevelMaterials().slots(), kind);
    default:
        return {};
    }
}

QVector<Slot> SceneWalk::below(const QVector<Slot> &topLevel, nkObjectType kind) const
{
    QVector<Slot> found;
    // What is still to be visited, the next one last.
    QVector<Slot> waiting(topLevel.size());
    std::reverse_copy(topLevel.cbegin(), topLevel.cend(), waiting.begin());
    while (!waiting.isEmpty()) {
        const Slot slot = waiting.takeLast();
        const ObjectRecord &object = m_store.object(slot);
        if (object.type == kind) {
            found.append(slot);
        }
        const QVector<Slot> &children = object.children.slots();
        std::reverse_copy(children.cbegin(), children.cend(), std::back_inserter(waiting));
    }
    return found;
}

} // namespace kernel
