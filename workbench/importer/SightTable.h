#pragma once

#include "SceneTree.h"

#include <interchange/importer/FlatWriter.h>

#include <assimp/scene.h>

#include <string>
#include <vector>

/// The cameras and lights of a scene, and which nodes they stand on: the library ties them by name.
class SightTable
{
public:
    SightTable(const aiScene &scene, const SceneTree &tree);

    int cameraOf(size_t item) const { return m_cameraOfItem[item]; }
    int lightOf(size_t item) const { return m_lightOfItem[item]; }

    /// Turns the nodes of cameras and lights so that these look and shine along -z, which the library does not
    /// promise, and leaves everything below them where it was. A node that shows a mesh, too, stays as it is.
    void aim(SceneTree &tree) const;

    void sendCameras(interchange::FlatWriter &writer) const;
    void sendLights(interchange::FlatWriter &writer) const;

private:
    bool turnOf(size_t item, const aiNode &node, aiMatrix4x4 &turn) const;
    static void sendCamera(const aiCamera &camera, interchange::FlatWriter &writer);
    static void sendLight(const aiLight &light, interchange::FlatWriter &writer);

    const aiScene &m_scene;
    std::vector<int> m_cameraOfItem;
    std::vector<int> m_lightOfItem;
};
