#include "SceneSender.h"

#include "Sound.h"
#include "UpAxis.h"

#include <interchange/importer/ImportLimits.h>

#include <algorithm>

using namespace interchange;

namespace {

/// The colour of the surface. Several kinds of files say 0 for the opacity of everything that is not transparent.
aiColor4D colorOf(const aiMaterial &material)
{
    aiColor4D color(0.8F, 0.8F, 0.8F, 1);
    if (material.Get(AI_MATKEY_BASE_COLOR, color) != aiReturn_SUCCESS)
        material.Get(AI_MATKEY_COLOR_DIFFUSE, color);
    float opacity = 1;
    material.Get(AI_MATKEY_OPACITY, opacity);
    color.a = opacity > 0 ? opacity : 1;
    return color;
}

} // namespace

SceneSender::SceneSender(const aiScene &scene, FlatWriter &writer)
    : m_scene(scene),
      m_writer(writer),
      m_tree(scene.mRootNode),
      m_meshes(scene, m_tree),
      m_sights(scene, m_tree)
{
    m_tree.mendMatrices(m_troubles);
    m_sights.aim(m_tree);
    if (!m_tree.items().empty())
        m_tree.items().front().local = UpAxis::upright(scene) * m_tree.items().front().local;
}

std::string SceneSender::exceeded() const
{
    if (m_tree.isTooDeep())
        return "depth";
    if (m_tree.isTooLarge())
        return "nodes";
    if (m_meshes.isTooLarge())
        return "triangles";
    if (m_scene.mNumMaterials > importlimits::Materials)
        return "materials";
    if (m_scene.mNumCameras > importlimits::Cameras || m_scene.mNumLights > importlimits::Lights)
        return "cameras";
    return entryCount() > importlimits::Entries ? "entries" : "";
}

/// The root carries what the file says of itself.
EntrySender SceneSender::entriesOf(size_t item) const
{
    const aiMetadata *own = m_tree.items()[item].node->mMetaData;
    return item == 0 ? EntrySender({own, m_scene.mMetaData}) : EntrySender({own});
}

uint64_t SceneSender::entryCount() const
{
    uint64_t count = 0;
    for (size_t i = 0; i < m_tree.items().size(); ++i)
        count += entriesOf(i).count();
    return count;
}

bool SceneSender::isEmpty() const
{
    return m_tree.items().size() <= 1 && m_scene.mNumMeshes == 0 && m_scene.mNumCameras == 0
           && m_scene.mNumLights == 0 && m_scene.mNumMaterials <= 1;
}

void SceneSender::send(const std::set<std::string> &refused)
{
    for (const std::string &path : refused)
        m_troubles.add(flat::Trouble::OutsideFolder, path);
    m_writer.record(flat::Record::Scene);
    sendMaterials();
    m_meshes.send(m_writer, m_troubles);
    m_sights.sendCameras(m_writer);
    m_sights.sendLights(m_writer);
    sendNodes();
    m_troubles.send(m_writer);
    m_writer.word(flat::EndMark);
    m_writer.flush();
}

void SceneSender::sendMaterials()
{
    static const aiMaterial usual;
    m_writer.word(m_scene.mNumMaterials);
    for (unsigned i = 0; i < m_scene.mNumMaterials; ++i) {
        const aiMaterial &material = m_scene.mMaterials[i] ? *m_scene.mMaterials[i] : usual;
        aiString name;
        material.Get(AI_MATKEY_NAME, name);
        m_writer.text(Sound::text(name));
        const aiColor4D color = colorOf(material);
        for (const float part : {color.r, color.g, color.b, color.a})
            m_writer.single(Sound::within(part, 0, 1, part > 1 ? 1 : 0));
        int isDoubleSided = 0;
        material.Get(AI_MATKEY_TWOSIDED, isDoubleSided);
        m_writer.byte(isDoubleSided != 0 ? 1 : 0);
    }
}

void SceneSender::sendNodes()
{
    m_writer.word(uint32_t(m_tree.items().size()));
    for (size_t i = 0; i < m_tree.items().size(); ++i)
        sendNode(i);
}

void SceneSender::sendNode(size_t item)
{
    const SceneTree::Item &node = m_tree.items()[item];
    m_writer.text(Sound::text(node.node->mName));
    m_writer.index(node.parent);
    for (int i = 0; i < 16; ++i)
        m_writer.single(Sound::isFinite(node.local) ? node.local[i / 4][i % 4] : i % 5 == 0 ? 1 : 0);
    const int camera = m_sights.cameraOf(item);
    const int light = m_sights.lightOf(item);
    const auto kind = camera >= 0 ? flat::Kind::Camera : light >= 0 ? flat::Kind::Light : flat::Kind::Node;
    m_writer.byte(uint8_t(kind));
    m_writer.index(m_meshes.meshOf(item));
    m_writer.index(camera);
    m_writer.index(light);
    entriesOf(item).send(m_writer);
}
