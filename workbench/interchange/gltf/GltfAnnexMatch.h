#pragma once

#include <interchange/gltf/GltfAnnex.h>
#include <interchange/gltf/GltfScene.h>

#include <array>
#include <vector>

namespace interchange {

/// Finds what an annex speaks of in the scene that was read beside it. Other programs move objects in their lists: a
/// name that fits says more than a place. What is not there any more is said in the scene's report.
class GltfAnnexMatch
{
public:
    using Kind = GltfAnnex::Reference::Kind;

    /// Both must outlive it.
    GltfAnnexMatch(GltfScene &scene, const GltfAnnex &annex);

    /// What the annex says about an object; null where it says nothing.
    const GltfAnnex::Object *find(Kind kind, quint32 index) const;
    /// Places in the annex's objects, by the indices of those that were found.
    const QHash<quint32, quint32> &objects(Kind kind) const { return m_objects[kind]; }
    /// What stands in the file and is not to be shown.
    const std::vector<GltfAnnex::Reference> &removed() const { return m_removed; }
    /// The nodes at the top level in the order in which people see them.
    const std::vector<qint32> &roots() const { return m_roots; }
    /// The tree of materials and groups, by the indices in the file; a group stands before what is in it.
    const std::vector<GltfAnnex::MaterialItem> &materials() const { return m_materials; }

private:
    void matchObjects();
    void matchRemoved();
    void matchRoots();
    void matchMaterials();
    qint64 indexOf(const GltfAnnex::Reference &reference) const;
    bool isListed(qint64 node) const { return m_listed[size_t(node)]; }
    qint64 hiddenNode(const GltfAnnex::Reference &reference) const;
    void refuse(const char *list, size_t index, const QString &name);

    GltfScene &m_scene;
    const GltfAnnex &m_annex;
    std::array<QHash<quint32, quint32>, 3> m_objects; ///< by kind
    std::vector<bool> m_listed;                       ///< by node: a scene names it
    std::vector<bool> m_isHidden;                     ///< by node
    std::vector<bool> m_isHiddenMaterial;
    std::vector<GltfAnnex::Reference> m_removed;
    std::vector<qint32> m_roots;
    std::vector<GltfAnnex::MaterialItem> m_materials;
};

} // namespace interchange
