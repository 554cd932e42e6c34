#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <interchange/SceneFile.h>
#include <kernel/document/Document.h>

/// A scene file as programs for buildings and machines export them, for the benchmarks of scene files: nodes in a
/// tree of ten branches each, with a mesh, a place, and extras of the types that are common.
class SceneFileMaterial
{
public:
    /// @param nodes how many; so many entries go with them as in the files of that size that people have
    explicit SceneFileMaterial(qint64 nodes)
    {
        write(nodes, nodes < 50000 ? nodes * 72603 / 12603 : nodes * 10);
    }
    ~SceneFileMaterial() { kernel::Document::the().clear(); }

    QString path() const { return m_folder.filePath(QStringLiteral("scene.gltf")); }

private:
    static constexpr qint64 Branches = 10;

    void write(qint64 nodes, qint64 entries) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write("{\"asset\":{\"version\":\"2.0\"},\"scene\":0,\"scenes\":[{\"nodes\":[0]}],\n"
                   "\"meshes\":[{\"primitives\":[{\"attributes\":{}}]}],\n\"nodes\":[");
        for (qint64 i = 0; i < nodes; ++i)
            file.write((i == 0 ? "\n" : ",\n")
                       + node(i, nodes, entries * (i + 1) / nodes - entries * i / nodes));
        file.write("]}\n");
    }

    static QByteArray node(qint64 index, qint64 nodes, qint64 entries)
    {
        QByteArray text = "{\"name\":\"Part " + QByteArray::number(index) + "\",\"mesh\":0,\"translation\":["
                          + QByteArray::number(double(index) / 8) + ",0,1.5]";
        QByteArrayList children;
        for (qint64 i = index * Branches + 1; i <= (index + 1) * Branches && i < nodes; ++i)
            children.append(QByteArray::number(i));
        if (!children.isEmpty())
            text += ",\"children\":[" + children.join(',') + ']';
        QByteArrayList members;
        for (qint64 i = 0; i < entries; ++i)
            members.append("\"property " + QByteArray::number(i) + "\":" + value(index + i));
        return text + ",\"extras\":{" + members.join(',') + "}}";
    }

    static QByteArray value(qint64 number)
    {
        switch (number % 5) {
        case 0:
            return QByteArray::number(number);
        case 1:
            return QByteArray::number(double(number) / 7, 'g', 15);
        case 2:
            return number % 2 == 0 ? "true" : "false";
        default:
            return "\"value " + QByteArray::number(number) + " of the part\"";
        }
    }

    QTemporaryDir m_folder;
};
