#pragma once

#include <interchange/GltfScene.h>
#include <interchange/SceneSource.h>

#include <kernel/document/DocumentLoader.h>

#include <vector>

namespace interchange {

/// Makes the document out of a scene that was read: one object a node and a material, in the order of the scene, and
/// their entries in their object sets. Meshes, cameras and lights as such are no objects; the nodes that carry them
/// are.
class SceneImporter
{
public:
    /// Both must outlive the importer.
    SceneImporter(const GltfScene &scene, SceneSource &source);

    /// Puts the scene in the place of the present one, in one go and not undoable, and notes in the source where
    /// each object and entry stands in the file. False when the document refuses, as it does while a change is being
    /// made: then nothing has changed there.
    bool import();

private:
    bool addNodes(kernel::DocumentLoader &loader);
    bool addNode(kernel::DocumentLoader &loader, qint32 index, quint64 parentId);
    bool addMaterials(kernel::DocumentLoader &loader);
    bool addEntries(kernel::DocumentLoader &loader, quint64 objectId, const IndexRange &range);
    static quint64 addEntry(kernel::DocumentLoader &loader, quint64 setId, const ExtrasEntry &entry);

    const GltfScene &m_scene;
    SceneSource &m_source;
    std::vector<quint64> m_nodeIds; ///< by the node's index; 0 before it was added
};

} // namespace interchange
