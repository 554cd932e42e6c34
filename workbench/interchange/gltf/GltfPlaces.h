#pragma once

#include <interchange/SceneSource.h>
#include <interchange/gltf/GltfTransform.h>

#include <kernel/document/Store.h>

#include <QHash>

#include <optional>
#include <vector>

namespace interchange {

/// Where the nodes of a text stand in the world: by the parents that they had when it was read or written. What is
/// not in the text yet stands where its parent stands.
class GltfPlaces
{
public:
    /// All outlive it. @param nodes the elements of the text's `nodes`
    GltfPlaces(const SceneSource &source, const kernel::Store &store, const std::vector<JsonValue> &nodes);

    /// Of the node with this id; the world itself for 0.
    GltfTransform world(quint64 id);
    /// What a node needs to have as its own transform below another parent to stay at its place; nothing where it
    /// stays as it is, or where no transform does that, for which isLost becomes true.
    std::optional<GltfTransform> below(const SceneSource::ObjectOrigin &node, quint64 parentId, bool &isLost);

private:
    quint64 parentOf(quint64 id) const;
    GltfTransform own(quint64 id) const;

    const SceneSource &m_source;
    const kernel::Store &m_store;
    const std::vector<JsonValue> &m_nodes;
    QHash<quint64, GltfTransform> m_worlds;
};

} // namespace interchange
