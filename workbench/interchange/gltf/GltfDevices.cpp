#include <interchange/gltf/GltfDevices.h>

#include <algorithm>

namespace interchange {

namespace {

const QLatin1String CamerasKey("cameras");
const QLatin1String ExtensionsKey("extensions");
const QLatin1String UsedKey("extensionsUsed");
const QLatin1String RequiredKey("extensionsRequired");
const QLatin1String PunctualLights("KHR_lights_punctual");
const QLatin1String LightsKey("lights");
const QLatin1String LightKey("light");
const QLatin1String CameraKey("camera");

JsonValue objectIn(const JsonValue &object, QLatin1String key)
{
    const JsonValue found = object.find(key);
    return found.isObject() ? found : JsonValue();
}

JsonValue lightOf(const JsonValue &node)
{
    return objectIn(objectIn(node, ExtensionsKey), PunctualLights).find(LightKey);
}

} // namespace

GltfDevices::GltfDevices(const JsonTree &tree, const SceneSource &source, JsonEdit &edit)
    : m_root(tree.root()),
      m_extensions(objectIn(m_root, ExtensionsKey)),
      m_punctual(objectIn(m_extensions, PunctualLights)),
      m_edit(edit),
      m_isSpaced(edit.isSpaced(m_root)),
      m_cameras(listOf(m_root.find(CamerasKey), source.madeCameras)),
      m_lights(listOf(m_punctual.find(LightsKey), source.madeLights))
{}

GltfDevices::List GltfDevices::listOf(const JsonValue &value, quint32 made)
{
    List list;
    list.value = value;
    for (const JsonValue element : value.children())
        list.elements.push_back(element);
    list.made = made;
    return list;
}

void GltfDevices::cut(const std::vector<JsonValue> &nodes)
{
    quint32 usedCameras = 0;
    quint32 usedLights = 0;
    for (const JsonValue &node : nodes) {
        if (const JsonValue camera = node.find(CameraKey); camera.isPresent())
            usedCameras = std::max(usedCameras, JsonEdit::wholeOf(camera) + 1);
        if (const JsonValue light = lightOf(node); light.isPresent())
            usedLights = std::max(usedLights, JsonEdit::wholeOf(light) + 1);
    }
    cutFrom(m_cameras, usedCameras);
    cutFrom(m_lights, usedLights);
}

void GltfDevices::cutFrom(List &list, quint32 used)
{
    while (list.made > 0 && list.elements.size() > used) {
        m_edit.remove(list.value, list.elements.back());
        list.elements.pop_back();
        --list.made;
    }
}

JsonEdit::Member GltfDevices::addCamera()
{
    const QByteArray lens = JsonEdit::inLine(
        {{QStringLiteral("yfov"), "0.8"}, {QStringLiteral("znear"), "0.01"}}, m_isSpaced);
    const JsonEdit::Member number{CameraKey, QByteArray::number(m_cameras.next())};
    m_cameras.added.append(m_edit.elementText(
        JsonValue(), m_root,
        {{QStringLiteral("type"), "\"perspective\""}, {QStringLiteral("perspective"), lens}}));
    ++m_cameras.made;
    return number;
}

JsonEdit::Member GltfDevices::addLight()
{
    const QByteArray light = JsonEdit::inLine({{LightKey, QByteArray::number(m_lights.next())}}, m_isSpaced);
    m_lights.added.append(JsonEdit::inLine(
        {{QStringLiteral("type"), "\"directional\""}, {QStringLiteral("intensity"), "3"}}, m_isSpaced));
    ++m_lights.made;
    return {ExtensionsKey, JsonEdit::inLine({{PunctualLights, light}}, m_isSpaced)};
}

void GltfDevices::finish()
{
    if (m_cameras.value.isPresent()) {
        for (const QByteArray &camera : qAsConst(m_cameras.added))
            m_edit.appendElement(m_cameras.value, camera);
    } else if (!m_cameras.added.isEmpty()) {
        m_edit.appendList(m_root, CamerasKey, m_cameras.added);
    }
    addLights();
    if (!m_lights.added.isEmpty())
        nameExtension();
    else if (m_lights.value.isPresent() && m_lights.elements.empty() && m_lights.value.hasChildren())
        forgetExtension();
}

void GltfDevices::addLights()
{
    if (m_lights.value.isPresent()) {
        for (const QByteArray &light : qAsConst(m_lights.added))
            m_edit.appendElement(m_lights.value, light);
        return;
    }
    if (m_lights.added.isEmpty())
        return;
    const QByteArray list = '[' + m_lights.added.join(m_isSpaced ? ", " : ",") + ']';
    const JsonEdit::Member punctual{PunctualLights, JsonEdit::inLine({{LightsKey, list}}, m_isSpaced)};
    if (m_punctual.isPresent())
        m_edit.append(m_punctual, {LightsKey, list});
    else if (m_extensions.isPresent())
        m_edit.append(m_extensions, punctual);
    else
        m_edit.appendObject(m_root, ExtensionsKey, {punctual});
}

void GltfDevices::nameExtension()
{
    const JsonValue used = m_root.find(UsedKey);
    for (const JsonValue name : used.children()) {
        if (name.isString() && name.toText() == PunctualLights)
            return;
    }
    if (used.isPresent())
        m_edit.appendElement(used, JsonEdit::quoted(PunctualLights));
    else
        m_edit.append(m_root, {UsedKey, '[' + JsonEdit::quoted(PunctualLights) + ']'});
}

/// Only our lights were there, so nothing of the extension is left.
void GltfDevices::forgetExtension()
{
    if (m_root.find(RequiredKey).isPresent())
        return;
    const JsonValue used = m_root.find(UsedKey);
    for (const JsonValue name : used.children()) {
        if (name.isString() && name.toText() == PunctualLights)
            m_edit.remove(used, name);
    }
}

} // namespace interchange
