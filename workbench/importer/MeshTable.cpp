#include "MeshTable.h"

#include "PartSender.h"

#include <interchange/importer/ImportLimits.h>

using namespace interchange;

MeshTable::MeshTable(const aiScene &scene, const SceneTree &tree) : m_scene(scene)
{
    for (unsigned i = 0; i < scene.mNumMeshes; ++i)
        m_hasTriangles.push_back(scene.mMeshes[i] && PartSender(*scene.mMeshes[i]).hasTriangles());
    std::map<List, int> known;
    for (const SceneTree::Item &item : tree.items()) {
        const List list = drawn(*item.node);
        int mesh = -1;
        if (!list.empty()) {
            const auto [place, isNew] = known.emplace(list, int(m_meshes.size()));
            if (isNew)
                measure(list);
            mesh = place->second;
        }
        m_meshOfItem.push_back(mesh);
    }
}

/// The node's meshes that have triangles and stand in the scene.
MeshTable::List MeshTable::drawn(const aiNode &node) const
{
    List list;
    for (unsigned i = 0; i < node.mNumMeshes; ++i)
        if (node.mMeshes[i] < m_hasTriangles.size() && m_hasTriangles[node.mMeshes[i]])
            list.push_back(node.mMeshes[i]);
    return list;
}

void MeshTable::measure(const List &list)
{
    m_meshes.push_back(list);
    m_parts += list.size();
    for (const unsigned index : list) {
        m_vertices += m_scene.mMeshes[index]->mNumVertices;
        m_indices += 3 * uint64_t(m_scene.mMeshes[index]->mNumFaces);
    }
}

bool MeshTable::isTooLarge() const
{
    return m_parts > importlimits::Parts || m_vertices > importlimits::Vertices
           || m_indices > importlimits::Indices;
}

void MeshTable::send(FlatWriter &writer, Troubles &troubles) const
{
    writer.word(uint32_t(m_meshes.size()));
    for (const List &list : m_meshes) {
        writer.word(uint32_t(list.size()));
        for (const unsigned index : list)
            PartSender(*m_scene.mMeshes[index]).send(writer, m_scene.mNumMaterials, troubles);
    }
}
