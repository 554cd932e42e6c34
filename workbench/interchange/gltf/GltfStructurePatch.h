#pragma once

#include <interchange/gltf/GltfScene.h>
#include <interchange/gltf/GltfStructurePlan.h>
#include <interchange/json/JsonEdit.h>

#include <memory>

namespace interchange {

class GltfDevices;

/// Brings the lists of a glTF text (nodes and their children, scenes, materials, cameras, lights) to what the document
/// has: new objects come to the end, what moved is listed elsewhere, what was deleted is listed nowhere. Nothing is
/// renumbered: others may refer to what was deleted, so it stays. What a save has added comes out again where it
/// stands at the end of its list.
///
/// Names and entries are not its business, but for the names of new objects.
class GltfStructurePatch
{
public:
    /// Both outlive it.
    GltfStructurePatch(const SceneSource &source, const GltfStructurePlan &plan);
    ~GltfStructurePatch();
    Q_DISABLE_COPY(GltfStructurePatch)

    /// The text. To be called once.
    QByteArray text();
    /// Where the objects stand in the text, once it has been read: what the source says, brought to the new text.
    SceneSource sourceFor(const QByteArray &json, const GltfScene &scene) const;

    /// See GltfPlacer.
    int disturbedCount() const { return m_disturbedCount; }
    int lostCount() const { return m_lostCount; }

private:
    using Origin = SceneSource::ObjectOrigin;
    using List = SceneSource::List;

    void collect();
    void cut(List list, std::vector<JsonValue> &elements, QLatin1String key);
    static bool canBeCut(const Origin &origin, const JsonValue &element);
    void numberNew();
    quint32 numberOf(quint64 id) const;
    void patchChildren();
    QByteArray newNode(quint64 id, GltfDevices &devices) const;
    QByteArray newMaterial(quint64 id) const;
    void add(QLatin1String key, const QByteArrayList &added);
    Origin newOrigin(quint64 id, List list, const GltfScene &scene) const;
    void keep(SceneSource &target, const Origin &origin, const GltfScene &scene) const;

    const SceneSource &m_source;
    const GltfStructurePlan &m_plan;
    const kernel::Store &m_store;
    JsonTree m_tree;
    JsonPatches m_patches;
    std::unique_ptr<JsonEdit> m_edit;
    std::vector<JsonValue> m_nodes; ///< without those that are taken out
    std::vector<JsonValue> m_materials;
    QHash<quint64, quint32> m_newNumbers;
    QSet<quint64> m_cut; ///< ids
    quint32 m_madeCameras = 0;
    quint32 m_madeLights = 0;
    int m_disturbedCount = 0;
    int m_lostCount = 0;
};

} // namespace interchange
