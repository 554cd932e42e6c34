#pragma once

#include <interchange/gltf/GltfPlaces.h>
#include <interchange/gltf/GltfStructurePlan.h>
#include <interchange/json/JsonEdit.h>

namespace interchange {

/// Gives nodes that stand below others than they did the transforms that keep them where they were, and knows which
/// nodes animations move and skins are bound to: those may look different where they were moved or deleted.
class GltfPlacer
{
public:
    /// All outlive it. @param nodes the elements of the text's `nodes`
    GltfPlacer(const JsonTree &tree, const SceneSource &source, const GltfStructurePlan &plan,
               const std::vector<JsonValue> &nodes, JsonEdit &edit);

    void place();

    /// How many nodes were moved or deleted that animations move or skins are bound to.
    int disturbedCount() const { return m_disturbedCount; }
    /// How many moved to where no transform keeps their place.
    int lostCount() const { return m_lostCount; }

private:
    void findBound();
    void place(quint32 index, const GltfTransform &transform);
    void setSteps(const JsonValue &node, const GltfTransform::Steps &steps);
    void setMember(const JsonValue &node, QLatin1String key, const QByteArray &text);

    const JsonTree &m_tree;
    const GltfStructurePlan &m_plan;
    const std::vector<JsonValue> &m_nodes;
    JsonEdit &m_edit;
    GltfPlaces m_places;
    QSet<quint32> m_animated;
    QSet<quint32> m_bound;
    int m_disturbedCount = 0;
    int m_lostCount = 0;
};

} // namespace interchange
