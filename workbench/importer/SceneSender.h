#pragma once

#include "EntrySender.h"
#include "MeshTable.h"
#include "SceneTree.h"
#include "SightTable.h"
#include "Troubles.h"

#include <interchange/importer/FlatWriter.h>

#include <assimp/scene.h>

#include <set>
#include <string>

/// Answers a scene that the library has read, as far as it is within the limits.
class SceneSender
{
public:
    SceneSender(const aiScene &scene, interchange::FlatWriter &writer);

    /// The limit that the scene exceeds, see flat::Failure::TooMuch; empty where it exceeds none.
    std::string exceeded() const;
    /// There is nothing in it but the root that the library makes for every file.
    bool isEmpty() const;
    /// Writes the record. @param refused paths of files that were not read
    void send(const std::set<std::string> &refused);

private:
    uint64_t entryCount() const;
    EntrySender entriesOf(size_t item) const;
    void sendMaterials();
    void sendNodes();
    void sendNode(size_t item);

    const aiScene &m_scene;
    interchange::FlatWriter &m_writer;
    Troubles m_troubles;
    SceneTree m_tree;
    MeshTable m_meshes;
    SightTable m_sights;
};
