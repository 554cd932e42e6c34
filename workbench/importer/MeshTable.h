#pragma once

#include "SceneTree.h"
#include "Troubles.h"

#include <interchange/importer/FlatWriter.h>

#include <assimp/scene.h>

#include <map>
#include <vector>

/// The meshes of a scene as nodes show them: equal lists of the library's meshes are one mesh here, with a part for
/// each of the list that has triangles.
class MeshTable
{
public:
    MeshTable(const aiScene &scene, const SceneTree &tree);

    /// What is shown by a node of the tree, by its index there; -1 for nothing.
    int meshOf(size_t item) const { return m_meshOfItem[item]; }
    size_t count() const { return m_meshes.size(); }
    /// Whether there is more of them than may be answered.
    bool isTooLarge() const;
    void send(interchange::FlatWriter &writer, Troubles &troubles) const;

private:
    using List = std::vector<unsigned>;

    List drawn(const aiNode &node) const;
    void measure(const List &list);

    const aiScene &m_scene;
    std::vector<bool> m_hasTriangles;
    std::vector<int> m_meshOfItem;
    std::vector<List> m_meshes;
    uint64_t m_parts = 0;
    uint64_t m_vertices = 0;
    uint64_t m_indices = 0;
};
