#include <interchange/gltf/GltfReader.h>

#include <interchange/gltf/GltfHierarchy.h>
#include <interchange/gltf/OtherExtras.h>

namespace interchange {

namespace {

using Keys2 = std::array<QLatin1String, 2>;
using Keys3 = std::array<QLatin1String, 3>;

const QLatin1String NodesKey("nodes");
const QLatin1String MaterialsKey("materials");
const QLatin1String CamerasKey("cameras");
const QLatin1String MeshesKey("meshes");
const QLatin1String ScenesKey("scenes");
const QLatin1String ExtrasKeyword("extras");
const QLatin1String ExtensionsKey("extensions");
const QLatin1String PunctualLights("KHR_lights_punctual");

JsonSpan spanOf(const JsonValue &value)
{
    return value.isPresent() ? value.span() : JsonSpan();
}

QString textOf(const JsonValue &value)
{
    return value.isPresent() ? value.toText() : QString();
}

SceneCamera::Type cameraType(const QString &type)
{
    if (type == QLatin1String("perspective"))
        return SceneCamera::Type::Perspective;
    return type == QLatin1String("orthographic") ? SceneCamera::Type::Orthographic : SceneCamera::Type::Other;
}

SceneLight::Type lightType(const QString &type)
{
    if (type == QLatin1String("directional"))
        return SceneLight::Type::Directional;
    if (type == QLatin1String("point"))
        return SceneLight::Type::Point;
    return type == QLatin1String("spot") ? SceneLight::Type::Spot : SceneLight::Type::Other;
}

JsonValue childAt(const JsonValue &container, quint32 position)
{
    for (const JsonValue child : container.children()) {
        if (position-- == 0)
            return child;
    }
    return JsonValue();
}

} // namespace

struct GltfReader::Root
{
    explicit Root(const JsonValue &value)
    {
        static const std::array<QLatin1String, 9> keys{
            QLatin1String("asset"), CamerasKey, ExtensionsKey,          MeshesKey,    NodesKey,
            MaterialsKey,           ScenesKey,  QLatin1String("scene"), ExtrasKeyword};
        const auto found = knownMembers(value, keys);
        asset = found[0];
        cameras = found[1];
        extensions = found[2];
        meshes = found[3];
        nodes = found[4];
        materials = found[5];
        scenes = found[6];
        scene = found[7];
        extras = found[8];
    }

    JsonValue asset, cameras, extensions, meshes, nodes, materials, scenes, scene, extras;
};

GltfReader::GltfReader(const GltfLimits &limits) : m_limits(limits) {}

bool GltfReader::read(const QByteArray &json, GltfScene &scene)
{
    JsonTree tree;
    return read(json, scene, tree);
}

bool GltfReader::read(const QByteArray &json, GltfScene &scene, JsonTree &tree)
{
    m_scene = GltfScene();
    m_check = GltfCheck();
    m_error = SceneError();
    m_isCancelled = false;
    JsonReader reader(m_limits.json);
    reader.setGoOn(m_goOn);
    if (!reader.read(json, tree)) {
        m_isCancelled = reader.error().code == JsonErrorCode::Cancelled;
        m_error = SceneError::atJson(reader.error());
        return false;
    }
    ExtrasReader extras(m_scene.entries, m_scene.report);
    m_extras = &extras;
    const bool read = readRoot(tree.root());
    m_extras = nullptr;
    m_error = m_check.error();
    if (read)
        scene = std::move(m_scene);
    m_scene = GltfScene();
    return read;
}

bool GltfReader::readRoot(const JsonValue &value)
{
    if (!m_check.isObject(value))
        return false;
    const Root root(value);
    m_scene.rootSpan = value.span();
    m_scene.rootExtrasSpan = spanOf(root.extras);
    if (!readAsset(value, root.asset) || !m_check.isArray(root.meshes))
        return false;
    const quint32 meshCount = root.meshes.isPresent() ? root.meshes.count() : 0;
    const bool read = readCameras(root.cameras) && readLights(root.extensions)
                      && readNodes(root.nodes, meshCount) && readMaterials(root.materials)
                      && readScenes(root.scenes, root.scene) && resolveHierarchy(root.nodes);
    if (read)
        reportOtherExtras(value, m_scene.report);
    return read;
}

bool GltfReader::readAsset(const JsonValue &root, const JsonValue &asset)
{
    static const Keys3 keys{QLatin1String("version"), QLatin1String("minVersion"),
                            QLatin1String("generator")};
    if (!asset.isPresent())
        return m_check.fail(root, tr("the JSON text is no glTF scene: it has no “asset”"));
    if (!m_check.isObject(asset))
        return false;
    const auto [version, minimalVersion, generator] = knownMembers(asset, keys);
    if (!version.isPresent())
        return m_check.fail(asset, tr("the “asset” does not say its glTF version"));
    for (const JsonValue &text : {version, minimalVersion, generator}) {
        if (!m_check.isText(text))
            return false;
    }
    if (!textOf(version).startsWith(QLatin1String("2.")))
        return m_check.fail(version,
                            tr("the file is glTF %1, and only glTF 2.0 can be read").arg(textOf(version)));
    if (minimalVersion.isPresent() && textOf(minimalVersion) != QLatin1String("2.0"))
        return m_check.fail(minimalVersion,
                            tr("the file needs a reader of glTF %1").arg(textOf(minimalVersion)));
    m_scene.generator = textOf(generator);
    return true;
}

bool GltfReader::readCameras(const JsonValue &cameras)
{
    static const Keys2 keys{QLatin1String("name"), QLatin1String("type")};
    if (!m_check.isArrayOfObjects(cameras))
        return false;
    for (const JsonValue camera : cameras.children()) {
        const auto [name, type] = knownMembers(camera, keys);
        if (!m_check.isText(name) || !m_check.isText(type))
            return false;
        m_scene.cameras.push_back({textOf(name), cameraType(textOf(type))});
    }
    return true;
}

bool GltfReader::readLights(const JsonValue &extensions)
{
    static const Keys2 keys{QLatin1String("name"), QLatin1String("type")};
    if (!m_check.isObject(extensions))
        return false;
    const JsonValue punctual = extensions.find(PunctualLights);
    if (!m_check.isObject(punctual))
        return false;
    const JsonValue lights = punctual.find(QLatin1String("lights"));
    if (!m_check.isArrayOfObjects(lights))
        return false;
    for (const JsonValue light : lights.children()) {
        const auto [name, type] = knownMembers(light, keys);
        if (!m_check.isText(name) || !m_check.isText(type))
            return false;
        m_scene.lights.push_back({textOf(name), lightType(textOf(type))});
    }
    return true;
}

bool GltfReader::readNodes(const JsonValue &nodes, quint32 meshCount)
{
    if (!m_check.isArrayOfObjects(nodes))
        return false;
    m_scene.nodes.resize(nodes.isPresent() ? nodes.count() : 0);
    quint32 index = 0;
    for (const JsonValue node : nodes.children()) {
        if (!readNode(node, index++, meshCount))
            return false;
    }
    return true;
}

bool GltfReader::readNode(const JsonValue &value, quint32 index, quint32 meshCount)
{
    static const std::array<QLatin1String, 6> keys{QLatin1String("name"),   QLatin1String("children"),
                                                   QLatin1String("camera"), QLatin1String("mesh"),
                                                   ExtensionsKey,           ExtrasKeyword};
    const auto [name, children, camera, mesh, extensions, extras] = knownMembers(value, keys);
    SceneNode &node = m_scene.nodes[index];
    const bool good = m_check.isText(name) && readChildren(children, node)
                      && m_check.isIndex(camera, static_cast<quint32>(m_scene.cameras.size()), CamerasKey,
                                         node.camera)
                      && m_check.isIndex(mesh, meshCount, MeshesKey, node.mesh)
                      && readLightOf(extensions, node);
    if (!good)
        return false;
    if (node.camera >= 0)
        node.kind = SceneNodeKind::Camera;
    else if (node.light >= 0)
        node.kind = SceneNodeKind::Light;
    node.span = value.span();
    node.extrasSpan = spanOf(extras);
    if (!m_isKnown || !m_isKnown(value, false, index))
        node.entries = m_extras->read(extras, {NodesKey, index});
    nameNode(textOf(name), index);
    return true;
}

bool GltfReader::readChildren(const JsonValue &children, SceneNode &node)
{
    if (!m_check.isArray(children))
        return false;
    node.children.first = static_cast<quint32>(m_scene.children.size());
    for (const JsonValue child : children.children()) {
        qint32 index = -1;
        if (!m_check.isIndex(child, static_cast<quint32>(m_scene.nodes.size()), NodesKey, index))
            return false;
        m_scene.children.push_back(index);
        ++node.children.count;
    }
    return true;
}

bool GltfReader::readLightOf(const JsonValue &extensions, SceneNode &node)
{
    if (!m_check.isObject(extensions))
        return false;
    const JsonValue punctual = extensions.find(PunctualLights);
    if (!m_check.isObject(punctual))
        return false;
    return m_check.isIndex(punctual.find(QLatin1String("light")), static_cast<quint32>(m_scene.lights.size()),
                           QLatin1String("lights"), node.light);
}

/// Names stay as they are, however odd; only a node without one gets the name of its camera or light, or one that
/// says where it stands in the file.
void GltfReader::nameNode(const QString &name, quint32 index)
{
    SceneNode &node = m_scene.nodes[index];
    node.name = name;
    node.isNamed = !name.isEmpty();
    if (node.name.isEmpty() && node.kind == SceneNodeKind::Camera)
        node.name = m_scene.cameras[size_t(node.camera)].name;
    if (node.name.isEmpty() && node.kind == SceneNodeKind::Light)
        node.name = m_scene.lights[size_t(node.light)].name;
    if (!node.name.isEmpty())
        return;
    const QString pattern = node.kind == SceneNodeKind::Camera  ? tr("Camera %1")
                            : node.kind == SceneNodeKind::Light ? tr("Light %1")
                                                                : tr("Node %1");
    node.name = pattern.arg(index);
}

bool GltfReader::readMaterials(const JsonValue &materials)
{
    static const Keys2 keys{QLatin1String("name"), ExtrasKeyword};
    if (!m_check.isArrayOfObjects(materials))
        return false;
    quint32 index = 0;
    for (const JsonValue value : materials.children()) {
        const auto [name, extras] = knownMembers(value, keys);
        if (!m_check.isText(name))
            return false;
        SceneMaterial material;
        material.name = textOf(name);
        material.isNamed = !material.name.isEmpty();
        if (!material.isNamed)
            material.name = tr("Material %1").arg(index);
        material.span = value.span();
        material.extrasSpan = spanOf(extras);
        if (!m_isKnown || !m_isKnown(value, true, index))
            material.entries = m_extras->read(extras, {MaterialsKey, index});
        ++index;
        m_scene.materials.push_back(material);
    }
    return true;
}

bool GltfReader::readScenes(const JsonValue &scenes, const JsonValue &defaultScene)
{
    if (!m_check.isArrayOfObjects(scenes))
        return false;
    for (const JsonValue scene : scenes.children()) {
        if (!readScene(scene))
            return false;
    }
    return m_check.isIndex(defaultScene, static_cast<quint32>(m_scene.scenes.size()), ScenesKey,
                           m_scene.defaultScene);
}

bool GltfReader::readScene(const JsonValue &scene)
{
    static const Keys2 keys{QLatin1String("name"), NodesKey};
    const auto [name, nodes] = knownMembers(scene, keys);
    if (!m_check.isText(name) || !m_check.isArray(nodes))
        return false;
    SceneListing listing{textOf(name), {}};
    for (const JsonValue node : nodes.children()) {
        qint32 index = -1;
        if (!m_check.isIndex(node, static_cast<quint32>(m_scene.nodes.size()), NodesKey, index))
            return false;
        listing.nodes.push_back(index);
    }
    m_scene.scenes.push_back(std::move(listing));
    return true;
}

bool GltfReader::resolveHierarchy(const JsonValue &nodes)
{
    GltfHierarchy hierarchy(m_scene, m_limits.sceneDepth);
    if (hierarchy.resolve())
        return true;
    const GltfHierarchy::Fault &fault = hierarchy.fault();
    const JsonValue children =
        childAt(nodes, static_cast<quint32>(fault.node)).find(QLatin1String("children"));
    return m_check.fail(childAt(children, fault.position), fault.reason);
}

} // namespace interchange
