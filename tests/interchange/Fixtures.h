#pragma once

#include <interchange/gltf/GltfReader.h>
#include <interchange/json/JsonReader.h>
#include <interchange/json/JsonValue.h>

#include <QByteArray>
#include <QVariant>
#include <QtEndian>

/// Small builders and readers that several tests of this folder share.
namespace Fixtures {

/// A 32-bit word as it stands in binary files.
inline QByteArray word(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline QByteArray chunk(const QByteArray &type, const QByteArray &content)
{
    return word(static_cast<quint32>(content.size())) + type + content;
}

/// A binary glTF with the right lengths around these chunks.
inline QByteArray glb(const QByteArray &chunks, quint32 version = 2)
{
    return "glTF" + word(version) + word(static_cast<quint32>(12 + chunks.size())) + chunks;
}

/// A binary glTF with this JSON text, padded by blanks, and some bytes of geometry.
inline QByteArray glbOf(const QByteArray &json)
{
    const QByteArray padded = json + QByteArray((4 - json.size() % 4) % 4, ' ');
    return glb(chunk("JSON", padded) + chunk(QByteArray("BIN\0", 4), QByteArray(8, 'x')));
}

/// A scene file with these members beside its asset: `"nodes":[{}]`.
inline QByteArray gltf(const QByteArray &members)
{
    return R"({"asset":{"version":"2.0"})" + (members.isEmpty() ? QByteArray() : ',' + members) + '}';
}

/// A scene file with one node that has these extras.
inline QByteArray gltfWithExtras(const QByteArray &extras)
{
    return gltf(R"("nodes":[{"name":"Part","extras":)" + extras + "}]");
}

inline QByteArray bytesAt(const QByteArray &text, const interchange::JsonSpan &span)
{
    return text.mid(static_cast<int>(span.offset), static_cast<int>(span.length));
}

/// The entry with this key among those of a range; a default entry without key when there is none.
inline interchange::ExtrasEntry entry(const interchange::GltfScene &scene,
                                      const interchange::IndexRange &range, const QString &key)
{
    for (quint32 i = range.first; i < range.end(); ++i) {
        if (scene.entries[i].key == key)
            return scene.entries[i];
    }
    return interchange::ExtrasEntry();
}

inline QStringList paths(const QVector<interchange::ImportReport::Item> &items)
{
    QStringList found;
    for (const auto &item : items)
        found.append(item.path);
    return found;
}

} // namespace Fixtures
