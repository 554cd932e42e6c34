#pragma once

#include <interchange/SceneSource.h>
#include <interchange/geometry/GltfGeometryReader.h>
#include <interchange/gltf/GlbContainer.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

/// Scenes with geometry, made byte by byte: numbers go into one buffer, accessors refer to them.
class GeometryFile
{
public:
    /// Puts numbers behind the others, at a multiple of four, and returns where they stand.
    template <typename Number>
    int put(std::initializer_list<Number> numbers)
    {
        m_bytes.append(QByteArray((4 - m_bytes.size() % 4) % 4, '\0'));
        const int start = m_bytes.size();
        for (const Number number : numbers) {
            QByteArray one(int(sizeof(Number)), '\0');
            qToLittleEndian(number, one.data());
            m_bytes += one;
        }
        return start;
    }

    /// An accessor over numbers of its own view. @param more members of the accessor; @param stride 0: none
    int accessor(int start, int bytes, int type, const char *kind, int count, const QByteArray &more = {},
                 int stride = 0)
    {
        const int place = view(start, bytes, stride);
        m_accessors << R"({"bufferView":)" + QByteArray::number(place) + R"(,"componentType":)"
                           + QByteArray::number(type) + R"(,"type":")" + kind + R"(","count":)"
                           + QByteArray::number(count) + (more.isEmpty() ? QByteArray() : ',' + more) + '}';
        return m_accessors.size() - 1;
    }

    int view(int start, int bytes, int stride = 0)
    {
        m_views << R"({"buffer":0,"byteOffset":)" + QByteArray::number(start) + R"(,"byteLength":)"
                       + QByteArray::number(bytes)
                       + (stride > 0 ? R"(,"byteStride":)" + QByteArray::number(stride) : QByteArray()) + '}';
        return m_views.size() - 1;
    }

    /// An accessor written as it is.
    int rawAccessor(const QByteArray &text)
    {
        m_accessors << text;
        return m_accessors.size() - 1;
    }

    int positions(std::initializer_list<float> numbers)
    {
        const int start = put(numbers);
        return accessor(start, int(numbers.size()) * 4, 5126, "VEC3", int(numbers.size()) / 3);
    }

    int indices(std::initializer_list<quint16> numbers)
    {
        const int start = put(numbers);
        return accessor(start, int(numbers.size()) * 2, 5123, "SCALAR", int(numbers.size()));
    }

    /// The scene's text. @param members beside the geometry; @param uri of the buffer: empty for the binary chunk
    QByteArray json(const QByteArray &members, const QByteArray &uri) const
    {
        return R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":)" + QByteArray::number(m_bytes.size())
               + (uri.isEmpty() ? QByteArray() : R"(,"uri":")" + uri + '"') + R"(}],"bufferViews":[)"
               + m_views.join(',') + R"(],"accessors":[)" + m_accessors.join(',') + ']'
               + (members.isEmpty() ? QByteArray() : ',' + members) + '}';
    }

    QByteArray dataUri() const { return "data:application/octet-stream;base64," + m_bytes.toBase64(); }
    const QByteArray &bytes() const { return m_bytes; }

    /// The scene with its buffer inside the text.
    QByteArray text(const QByteArray &members) const { return json(members, dataUri()); }

    QByteArray binary(const QByteArray &members) const
    {
        QByteArray text = json(members, {});
        text += QByteArray((4 - text.size() % 4) % 4, ' ');
        const QByteArray chunk = m_bytes + QByteArray((4 - m_bytes.size() % 4) % 4, '\0');
        QByteArray header(8, '\0');
        qToLittleEndian(quint32(chunk.size()), header.data());
        qToLittleEndian(quint32(0x004E4942), header.data() + 4);
        return interchange::GlbContainer::head(text.size(), chunk.size() + 8) + text + header + chunk;
    }

    static interchange::SceneGeometry read(const QByteArray &json)
    {
        interchange::SceneSource source;
        source.json = json;
        return interchange::GltfGeometryReader(source).read();
    }

    interchange::SceneGeometry readWith(const QByteArray &members) const { return read(text(members)); }

private:
    QByteArray m_bytes;
    QByteArrayList m_views;
    QByteArrayList m_accessors;
};

using Floats = std::vector<float>;
using Indices = std::vector<uint32_t>;
