#include <interchange/gltf/GltfPlaces.h>

#include <QSet>

namespace interchange {

GltfPlaces::GltfPlaces(const SceneSource &source, const kernel::Store &store,
                       const std::vector<JsonValue> &nodes)
    : m_source(source), m_store(store), m_nodes(nodes)
{}

quint64 GltfPlaces::parentOf(quint64 id) const
{
    if (const SceneSource::ObjectOrigin *origin = m_source.object(id))
        return origin->parentId;
    const kernel::Slot slot = m_store.objectSlot(id);
    return slot == kernel::NoSlot ? 0 : m_store.idOf(m_store.object(slot).place.parent);
}

GltfTransform GltfPlaces::own(quint64 id) const
{
    const SceneSource::ObjectOrigin *origin = m_source.object(id);
    return origin ? GltfTransform::ofNode(m_nodes[origin->index]) : GltfTransform();
}

GltfTransform GltfPlaces::world(quint64 id)
{
    std::vector<quint64> path;
    QSet<quint64> passed; // parents of different times may lead in a circle
    for (; id != 0 && !m_worlds.contains(id) && !passed.contains(id); id = parentOf(id)) {
        path.push_back(id);
        passed.insert(id);
    }
    GltfTransform transform = m_worlds.value(id);
    for (; !path.empty(); path.pop_back()) {
        transform = transform * own(path.back());
        m_worlds.insert(path.back(), transform);
    }
    return transform;
}

std::optional<GltfTransform> GltfPlaces::below(const SceneSource::ObjectOrigin &node, quint64 parentId,
                                               bool &isLost)
{
    const GltfTransform from = world(node.parentId);
    const GltfTransform to = world(parentId);
    if (from == to)
        return std::nullopt;
    const std::optional<GltfTransform> back = to.inverted();
    isLost = isLost || !back;
    if (!back)
        return std::nullopt;
    return *back * from * GltfTransform::ofNode(m_nodes[node.index]);
}

} // namespace interchange
