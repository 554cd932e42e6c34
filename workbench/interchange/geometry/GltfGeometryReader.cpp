#include <interchange/geometry/GltfGeometryReader.h>

#include <interchange/SceneSource.h>
#include <interchange/geometry/GltfAccessors.h>
#include <interchange/geometry/GltfBuffers.h>
#include <interchange/geometry/GltfMember.h>
#include <interchange/geometry/GltfMeshes.h>
#include <interchange/json/JsonReader.h>

#include <QQuaternion>

#include <algorithm>
#include <array>

namespace interchange {

namespace {

const QLatin1String PunctualLights("KHR_lights_punctual");

bool isText(const JsonValue &value, const char *text)
{
    return value.isString() && value.toText() == QLatin1String(text);
}

QColor colorOf(const float *factor, float alpha)
{
    const auto bounded = [](float part) { return qreal(std::clamp(part, 0.0F, 1.0F)); };
    return QColor::fromRgbF(bounded(factor[0]), bounded(factor[1]), bounded(factor[2]), bounded(alpha));
}

/// Only materials that are to be blended are seen through; masked ones are cut out whole.
float alphaOf(const JsonValue &material, float alpha)
{
    const JsonValue mode = material.find(QLatin1String("alphaMode"));
    if (isText(mode, "BLEND"))
        return alpha;
    const float cutoff = GltfMember::number(material.find(QLatin1String("alphaCutoff"))).value_or(0.5F);
    return isText(mode, "MASK") && alpha < cutoff ? 0 : 1;
}

SceneGeometry::Material materialOf(const JsonValue &value)
{
    std::array<float, 4> factor{1, 1, 1, 1};
    const JsonValue metallic = value.find(QLatin1String("pbrMetallicRoughness"));
    const JsonValue glossy = GltfMember::extension(value,
                                                   QLatin1String("KHR_materials_pbrSpecularGlossiness"));
    if (!GltfMember::numbers(metallic.find(QLatin1String("baseColorFactor")), factor.data(), 4))
        GltfMember::numbers(glossy.find(QLatin1String("diffuseFactor")), factor.data(), 4);
    SceneGeometry::Material material;
    material.color = colorOf(factor.data(), alphaOf(value, factor[3]));
    const JsonValue doubleSided = value.find(QLatin1String("doubleSided"));
    material.isDoubleSided = doubleSided.isPresent() && doubleSided.toBool();
    return material;
}

void take(const JsonValue &object, const char *key, float smallest, float largest, float &number)
{
    const auto found = GltfMember::number(object.find(QLatin1String(key)));
    if (found && *found >= smallest && *found <= largest)
        number = *found;
}

SceneGeometry::Camera cameraOf(const JsonValue &value)
{
    SceneGeometry::Camera camera;
    constexpr float least = 1e-6F;
    constexpr float most = 1e12F;
    const JsonValue perspective = value.find(QLatin1String("perspective"));
    const JsonValue orthographic = value.find(QLatin1String("orthographic"));
    camera.isPerspective = !isText(value.find(QLatin1String("type")), "orthographic");
    const JsonValue lens = camera.isPerspective ? perspective : orthographic;
    take(lens, "znear", least, most, camera.zNear);
    take(lens, "zfar", least, most, camera.zFar);
    if (camera.isPerspective) {
        take(lens, "yfov", least, 3.14F, camera.verticalAngle);
        take(lens, "aspectRatio", least, 1000, camera.aspect);
        return camera;
    }
    float halfWidth = 0;
    float halfHeight = 1;
    take(lens, "xmag", least, most, halfWidth);
    take(lens, "ymag", least, most, halfHeight);
    camera.height = 2 * halfHeight;
    camera.aspect = halfWidth / halfHeight;
    return camera;
}

SceneGeometry::Light lightOf(const JsonValue &value)
{
    SceneGeometry::Light light;
    const JsonValue type = value.find(QLatin1String("type"));
    if (isText(type, "directional"))
        light.type = SceneGeometry::Light::Type::Directional;
    else if (isText(type, "spot"))
        light.type = SceneGeometry::Light::Type::Spot;
    std::array<float, 3> color{1, 1, 1};
    GltfMember::numbers(value.find(QLatin1String("color")), color.data(), 3);
    light.color = colorOf(color.data(), 1);
    take(value, "intensity", 0, 1e12F, light.intensity);
    take(value.find(QLatin1String("spot")), "outerConeAngle", 0, 1.5708F, light.outerAngle);
    return light;
}

QMatrix4x4 placeOf(const JsonValue &node)
{
    std::array<float, 16> columns{};
    if (GltfMember::numbers(node.find(QLatin1String("matrix")), columns.data(), 16))
        return QMatrix4x4(columns.data()).transposed();
    std::array<float, 3> moved{0, 0, 0};
    std::array<float, 4> turned{0, 0, 0, 1};
    std::array<float, 3> scaled{1, 1, 1};
    GltfMember::numbers(node.find(QLatin1String("translation")), moved.data(), 3);
    GltfMember::numbers(node.find(QLatin1String("rotation")), turned.data(), 4);
    GltfMember::numbers(node.find(QLatin1String("scale")), scaled.data(), 3);
    const QQuaternion rotation(turned[3], turned[0], turned[1], turned[2]);
    QMatrix4x4 place;
    place.translate(moved[0], moved[1], moved[2]);
    place.rotate(rotation.isNull() ? QQuaternion() : rotation.normalized());
    place.scale(scaled[0], scaled[1], scaled[2]);
    return place;
}

} // namespace

GltfGeometryReader::GltfGeometryReader(const SceneSource &source) : m_source(source) {}

SceneGeometry GltfGeometryReader::read()
{
    JsonTree tree;
    JsonReader reader;
    reader.setGoOn([this](double) { return !m_goOn || m_goOn(); });
    if (reader.read(m_source.json, tree)) {
        const JsonValue root = tree.root();
        readMaterials(root);
        readCameras(root);
        readLights(root);
        readMeshes(root);
        readNodes(root);
    } else {
        m_troubles.add(
            tr("Nothing is drawn: the scene's text cannot be read (%1).").arg(reader.error().reason));
    }
    m_scene.troubles = m_troubles.sentences();
    return std::move(m_scene);
}

void GltfGeometryReader::readMaterials(const JsonValue &root)
{
    for (const JsonValue &value : GltfMember::elements(root.find(QLatin1String("materials"))))
        m_scene.materials.push_back(materialOf(value));
}

void GltfGeometryReader::readCameras(const JsonValue &root)
{
    for (const JsonValue &value : GltfMember::elements(root.find(QLatin1String("cameras"))))
        m_scene.cameras.push_back(cameraOf(value));
}

void GltfGeometryReader::readLights(const JsonValue &root)
{
    const JsonValue lights = GltfMember::extension(root, PunctualLights).find(QLatin1String("lights"));
    for (const JsonValue &value : GltfMember::elements(lights))
        m_scene.lights.push_back(lightOf(value));
}

void GltfGeometryReader::readMeshes(const JsonValue &root)
{
    GltfBuffers buffers(m_source, root.find(QLatin1String("buffers")));
    GltfAccessors accessors(root, buffers);
    GltfMeshes meshes(accessors, m_troubles);
    for (const JsonValue &value : GltfMember::elements(root.find(QLatin1String("meshes")))) {
        if (m_goOn && !m_goOn())
            return;
        m_scene.meshes.push_back(meshes.read(value, m_scene.meshes.size(), m_scene.materials.size()));
    }
}

void GltfGeometryReader::readNodes(const JsonValue &root)
{
    const std::vector<JsonValue> nodes = GltfMember::elements(root.find(QLatin1String("nodes")));
    m_scene.nodes.resize(nodes.size());
    for (size_t i = 0; i < nodes.size(); ++i)
        readNode(nodes[i], m_scene.nodes[i]);
    linkChildren(nodes);
    cutRings();
}

void GltfGeometryReader::readNode(const JsonValue &value, SceneGeometry::Node &node) const
{
    node.local = placeOf(value);
    node.mesh = GltfMember::index(value.find(QLatin1String("mesh")), m_scene.meshes.size());
    node.camera = GltfMember::index(value.find(QLatin1String("camera")), m_scene.cameras.size());
    node.light = GltfMember::index(GltfMember::extension(value, PunctualLights).find(QLatin1String("light")),
                                   m_scene.lights.size());
}

void GltfGeometryReader::linkChildren(const std::vector<JsonValue> &nodes)
{
    for (size_t i = 0; i < nodes.size(); ++i) {
        for (const JsonValue &child : GltfMember::elements(nodes[i].find(QLatin1String("children")))) {
            const qint32 index = GltfMember::index(child, nodes.size());
            if (index >= 0 && m_scene.nodes[size_t(index)].parent < 0)
                m_scene.nodes[size_t(index)].parent = qint32(i);
        }
    }
}

/// Nodes that stand below themselves are set free, so that everybody can walk up.
void GltfGeometryReader::cutRings()
{
    enum State : char { New, OnTheWay, Done };
    std::vector<char> states(m_scene.nodes.size(), New);
    for (size_t start = 0; start < states.size(); ++start) {
        std::vector<size_t> way;
        size_t at = start;
        while (states[at] == New) {
            states[at] = OnTheWay;
            way.push_back(at);
            const qint32 parent = m_scene.nodes[at].parent;
            if (parent >= 0 && states[size_t(parent)] == OnTheWay) {
                m_scene.nodes[at].parent = -1;
                m_troubles.add(tr("Node %1 stands below itself and is drawn on its own.").arg(at));
            } else if (parent >= 0) {
                at = size_t(parent);
            }
        }
        for (const size_t passed : way)
            states[passed] = Done;
    }
}

} // namespace interchange
