#pragma once

#include <interchange/SceneSource.h>
#include <interchange/gltf/GltfAnnex.h>
#include <interchange/gltf/GltfAnnexMatch.h>
#include <interchange/gltf/GltfScene.h>

#include <kernel/document/DocumentLoader.h>

#include <vector>

namespace interchange {

/// Makes the document out of a scene that was read: one object a node and a material, in the order of the scene, and
/// their entries in their object sets; then what its annex adds, sets, assignments and groups for instance. Meshes,
/// cameras and lights as such are no objects; the nodes that carry them are. What the annex calls deleted is none.
class SceneImporter
{
public:
    /// All must outlive the importer. The scene's report is continued.
    SceneImporter(GltfScene &scene, const GltfAnnex &annex, SceneSource &source);

    /// Puts the scene in the place of the present one, in one go and not undoable, and notes in the source where
    /// each object and entry stands in the file. False when the document refuses, as it does while a change is being
    /// made: then nothing has changed there.
    bool import();

private:
    using Loader = kernel::DocumentLoader;

    bool addNodes(Loader &loader);
    bool addNode(Loader &loader, qint32 index, quint64 parentId);
    void addSceneplate(Loader &loader, quint64 id, const GltfAnnex::Sceneplate &sceneplate);
    bool addMaterials(Loader &loader);
    bool addMaterial(Loader &loader, quint32 index, quint64 groupId);
    bool addGroup(Loader &loader, const GltfAnnex::MaterialItem &group, quint64 groupId);
    bool addContent(Loader &loader, quint64 objectId, const IndexRange &range,
                    const GltfAnnex::Object *annex);
    bool addPlain(Loader &loader, quint64 setId, quint32 entry, const QString &key);
    bool addOwn(Loader &loader, quint64 setId, const IndexRange &range, const GltfAnnex::Object &annex);
    bool addOwnEntry(Loader &loader, quint64 setId, const kernel::EntryCopy &entry, qint64 place);
    void addSets(Loader &loader);
    void note(quint64 id, const ExtrasEntry *entry, const QString &key);
    static quint64 add(Loader &loader, quint64 setId, const QString &key, const ExtrasEntry &entry);
    static quint64 add(Loader &loader, quint64 setId, const kernel::EntryCopy &entry);

    GltfScene &m_scene;
    const GltfAnnex &m_annex;
    SceneSource &m_source;
    std::vector<quint64> m_nodeIds; ///< by the node's index; 0 before it was added
    std::vector<quint64> m_materialIds;
    std::vector<quint64> m_groupIds;
    GltfAnnexMatch m_match;
};

} // namespace interchange
