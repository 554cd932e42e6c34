#pragma once

#include "SavingFixture.h"

#include <interchange/gltf/GlbContainer.h>
#include <interchange/gltf/GltfAnnex.h>

#include <QBuffer>
#include <QMatrix4x4>
#include <QQuaternion>

/// The tree of a scene, of the document and of a file, for tests of saving it.
namespace SceneTree {

inline kernel::Document &document()
{
    return kernel::Document::the();
}

/// The JSON text of a text or binary file, without padding.
inline QByteArray jsonOf(const QByteArray &file)
{
    interchange::GlbContainer container;
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QByteArray json = file.startsWith("glTF") && container.read(buffer) ? container.json() : file;
    while (json.endsWith(' '))
        json.chop(1);
    return json;
}

inline void collect(const QList<quint64> &ids, int depth, QVector<QPair<quint64, int>> &all)
{
    for (const quint64 id : ids) {
        all.append({id, depth});
        collect(document().childrenOf(id), depth + 1, all);
    }
}

/// Everything in the order in which people see it, with its depth.
inline QVector<QPair<quint64, int>> walk()
{
    QVector<QPair<quint64, int>> all;
    collect(document().topLevelNodes(), 0, all);
    collect(document().topLevelMaterials(), 0, all);
    return all;
}

/// The whole document as text, whatever ids it has.
inline QString dump()
{
    QString text;
    QHash<quint64, int> places;
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    for (const nkdMetadataSet &set : sets) {
        text += QStringLiteral("set ") + set.getName();
        SavingFixture::addText(text, set);
    }
    for (const auto &[id, depth] : walk()) {
        const nkdSceneObject object{nkdObject(id)};
        places.insert(id, places.size());
        text += QString(depth * 2, QLatin1Char(' ')) + object.getName();
        QDebug(&text) << int(document().typeOf(id)) << object.getLocked() << document().sceneplateImage(id)
                      << int(document().sceneplatePlacement(id));
        for (const nkdMetadataSet &set : nkdMetadata::fromObject(object).getSets())
            text += QStringLiteral("+") + set.getName();
        SavingFixture::addText(text, SavingFixture::ownSet(object));
    }
    for (const nkdMetadataSet &set : sets) {
        for (const nkdSceneObject &object : set.getObjects())
            text += QStringLiteral("%1 on %2\n").arg(set.getName()).arg(places.value(object.getObjectId()));
    }
    return text;
}

inline quint64 find(const char *name)
{
    for (const auto &[id, depth] : walk()) {
        if (nkdSceneObject(nkdObject(id)).getName() == QLatin1String(name))
            return id;
    }
    return 0;
}

inline quint32 wholeOf(const interchange::JsonValue &value)
{
    bool ok = false;
    const int whole = value.isPresent() ? int(value.toDouble(&ok)) : -1;
    return ok && whole >= 0 ? quint32(whole) : 0xffffffffu;
}

/// What is wrong with a file by the rules of glTF, as far as structure goes; empty where nothing is.
inline QString fault(const QByteArray &file)
{
    using interchange::JsonValue;
    interchange::JsonTree tree;
    if (!interchange::JsonReader().read(jsonOf(file), tree))
        return QStringLiteral("no JSON");
    const JsonValue root = tree.root();
    const auto in = [](const JsonValue &object, const char *key) { return object.find(QLatin1String(key)); };
    const auto count = [&](const JsonValue &object, const char *key) {
        return in(object, key).isPresent() ? in(object, key).count() : 0;
    };
    for (const char *list : {"nodes", "scenes", "materials", "cameras", "extensionsUsed", "extensions"}) {
        if (in(root, list).isPresent() && count(root, list) == 0)
            return QStringLiteral("empty ") + QLatin1String(list);
    }
    const quint32 nodes = count(root, "nodes");
    const JsonValue lights = in(in(in(root, "extensions"), "KHR_lights_punctual"), "lights");
    QVector<int> parents(int(nodes), 0);
    for (const JsonValue node : in(root, "nodes").children()) {
        if (in(node, "children").isPresent() && count(node, "children") == 0)
            return QStringLiteral("empty children");
        for (const JsonValue child : in(node, "children").children()) {
            if (wholeOf(child) >= nodes || ++parents[int(wholeOf(child))] > 1)
                return QStringLiteral("bad child ") + child.path();
        }
        const JsonValue light = in(in(in(node, "extensions"), "KHR_lights_punctual"), "light");
        if (in(node, "camera").isPresent() && wholeOf(in(node, "camera")) >= count(root, "cameras"))
            return QStringLiteral("bad camera");
        if (light.isPresent() && (!lights.isPresent() || wholeOf(light) >= lights.count()))
            return QStringLiteral("bad light");
        if (in(node, "matrix").isPresent() && in(node, "translation").isPresent())
            return QStringLiteral("two transforms");
    }
    for (const JsonValue scene : in(root, "scenes").children()) {
        QSet<quint32> listed;
        for (const JsonValue node : in(scene, "nodes").children()) {
            if (wholeOf(node) >= nodes || listed.contains(wholeOf(node)) || parents[int(wholeOf(node))] > 0)
                return QStringLiteral("bad root ") + node.path();
            listed.insert(wholeOf(node));
        }
    }
    if (in(root, "scene").isPresent() && wholeOf(in(root, "scene")) >= count(root, "scenes"))
        return QStringLiteral("bad scene");
    return QString();
}

inline QMatrix4x4 placeOf(const interchange::JsonValue &node)
{
    const auto numbers = [&node](const char *key, std::vector<float> values) {
        size_t at = 0;
        for (const interchange::JsonValue number : node.find(QLatin1String(key)).children()) {
            bool ok = false;
            values[at++] = float(number.toDouble(&ok));
        }
        return values;
    };
    if (node.find(QLatin1String("matrix")).isPresent())
        return QMatrix4x4(numbers("matrix", std::vector<float>(16)).data()).transposed();
    const auto t = numbers("translation", {0, 0, 0});
    const auto r = numbers("rotation", {0, 0, 0, 1});
    const auto s = numbers("scale", {1, 1, 1});
    QMatrix4x4 place;
    place.translate(t[0], t[1], t[2]);
    place.rotate(QQuaternion(r[3], r[0], r[1], r[2]));
    place.scale(s[0], s[1], s[2]);
    return place;
}

/// Where the nodes of a file that have a mesh stand in the world, by the mesh; those that something leads to alone.
inline QMap<quint32, QMatrix4x4> worlds(const QByteArray &file, const QSet<quint32> &hidden = {})
{
    interchange::JsonTree tree;
    interchange::JsonReader().read(jsonOf(file), tree);
    std::vector<interchange::JsonValue> nodes;
    for (const interchange::JsonValue node : tree.root().find(QLatin1String("nodes")).children())
        nodes.push_back(node);
    std::vector<qint64> parents(nodes.size(), -1);
    for (size_t i = 0; i < nodes.size(); ++i) {
        for (const interchange::JsonValue child : nodes[i].find(QLatin1String("children")).children())
            parents[wholeOf(child)] = qint64(i);
    }
    QMap<quint32, QMatrix4x4> places;
    for (size_t i = 0; i < nodes.size(); ++i) {
        QMatrix4x4 place = placeOf(nodes[i]);
        bool isHidden = hidden.contains(quint32(i));
        for (qint64 parent = parents[i]; parent >= 0; parent = parents[size_t(parent)]) {
            place = placeOf(nodes[size_t(parent)]) * place;
            isHidden = isHidden || hidden.contains(quint32(parent));
        }
        const interchange::JsonValue mesh = nodes[i].find(QLatin1String("mesh"));
        if (mesh.isPresent() && !isHidden)
            places.insert(wholeOf(mesh), place);
    }
    return places;
}

/// The nodes that the annex of a file says are not to be shown.
inline QSet<quint32> hiddenIn(const QByteArray &file)
{
    interchange::JsonTree tree;
    interchange::JsonReader().read(jsonOf(file), tree);
    QSet<quint32> hidden;
    const auto annex = tree.root().find(QLatin1String("extras")).find(interchange::GltfAnnex::Member);
    for (const interchange::JsonValue removed : annex.find(QLatin1String("removed")).children()) {
        if (removed.find(QLatin1String("node")).isPresent())
            hidden.insert(wholeOf(removed.find(QLatin1String("node"))));
    }
    return hidden;
}

} // namespace SceneTree
