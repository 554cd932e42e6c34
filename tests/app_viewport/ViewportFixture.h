#pragma once

#include "viewport/ViewportPanel.h"

#include <interchange/SceneFile.h>
#include <interchange/geometry/SceneGeometry.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkdNode.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

/// A scene read from a file made here, as the document and the viewport have it:
///
///     Pair (group)
///       Left, Right (boxes of one unit, at x = -2 and x = 2; Left red, Right blue)
///     Eye (camera at z = 6)
///     Lamp (light at y = 4)
///     Empty (nothing to see)
class ViewportFixture
{
public:
    ViewportFixture()
    {
        kernel::Document::the().clear();
        nkMetadataModuleSelection::the().setLastSelectionModule(1);
        write(folder.filePath(QStringLiteral("scene.gltf")), text());
        source = SceneFile::open(folder.filePath(QStringLiteral("scene.gltf"))).source;
        note(kernel::Document::the().topLevelNodes());
    }

    static QByteArray text()
    {
        return R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":)" + QByteArray::number(box().size())
               + R"(,"uri":"data:;base64,)" + box().toBase64() + R"("}],)"
               + R"("bufferViews":[{"buffer":0,"byteLength":96},{"buffer":0,"byteOffset":96,"byteLength":72}],)"
                 R"("accessors":[{"bufferView":0,"componentType":5126,"type":"VEC3","count":8},)"
                 R"({"bufferView":1,"componentType":5123,"type":"SCALAR","count":36}],)"
                 R"("materials":[{"pbrMetallicRoughness":{"baseColorFactor":[1,0,0,1]}},)"
                 R"({"pbrMetallicRoughness":{"baseColorFactor":[0,0,1,1]}}],)"
                 R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":0}]},)"
                 R"({"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":1}]}],)"
                 R"("cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":0.1}}],)"
                 R"("extensions":{"KHR_lights_punctual":{"lights":[{"type":"point"}]}},)"
                 R"("nodes":[{"name":"Pair","children":[1,2]},{"name":"Left","mesh":0,"translation":[-2,0,0]},)"
                 R"({"name":"Right","mesh":1,"translation":[2,0,0]},)"
                 R"({"name":"Eye","camera":0,"translation":[0,0,6]},)"
                 R"({"name":"Lamp","extensions":{"KHR_lights_punctual":{"light":0}},"translation":[0,4,0]},)"
                 R"({"name":"Empty"}]})";
    }

    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("The scene cannot be written");
    }

    quint64 id(const char *name) const { return ids.value(QLatin1String(name)); }
    QList<quint64> idsOf(const QStringList &names) const
    {
        QList<quint64> found;
        for (const QString &name : names)
            found.append(ids.value(name));
        return found;
    }
    static QStringList namesOf(const QList<quint64> &objects)
    {
        QStringList names;
        for (const quint64 object : objects)
            names.append(nkdNode(nkdObject(object)).getName());
        return names;
    }
    static QStringList selection()
    {
        QStringList names;
        for (const nkdNode &node : nkScenegraphService::the().getSelectedNodes())
            names.append(node.getName());
        return names;
    }
    void select(const QStringList &names) const
    {
        QList<nkdNode> nodes;
        for (const QString &name : names)
            nodes.append(nkdNode(nkdObject(ids.value(name))));
        nkScenegraphService::the().setSelection(nodes);
    }
    static int last() { return nkMetadataModuleSelection::the().getLastSelectionModule(); }

    /// Names of what the scene shows now.
    static QStringList shown(const ViewportScene &scene)
    {
        QList<quint64> objects;
        for (const SceneItem &item : scene.items())
            objects.append(item.id);
        return namesOf(objects);
    }

    /// Where a point of the scene is seen.
    static QPoint seenAt(const OrbitCamera &camera, const QVector3D &point)
    {
        const QVector3D at = camera.viewProjection().map(point);
        return QPoint(qRound((at.x() + 1) / 2 * camera.size().width()),
                      qRound((1 - at.y()) / 2 * camera.size().height()));
    }

    QTemporaryDir folder;
    std::shared_ptr<const interchange::SceneSource> source;
    QHash<QString, quint64> ids;

private:
    void note(const QList<quint64> &objects)
    {
        for (const quint64 object : objects) {
            ids.insert(nkdNode(nkdObject(object)).getName(), object);
            note(kernel::Document::the().childrenOf(object));
        }
    }

    /// Eight corners and twelve triangles of a unit box.
    static QByteArray box()
    {
        QByteArray bytes;
        for (int i = 0; i < 8; ++i) {
            for (int axis = 0; axis < 3; ++axis) {
                char number[4];
                qToLittleEndian((i >> axis & 1) != 0 ? 0.5F : -0.5F, number);
                bytes.append(number, 4);
            }
        }
        for (const int corner : {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                 2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5}) {
            bytes.append(char(corner));
            bytes.append('\0');
        }
        return bytes;
    }
};
