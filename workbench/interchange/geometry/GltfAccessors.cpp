#include <interchange/geometry/GltfAccessors.h>

#include <interchange/geometry/GltfBuffers.h>
#include <interchange/geometry/GltfMember.h>

#include <QtEndian>

#include <algorithm>

namespace interchange {

namespace {

enum ComponentType { Int8 = 5120, UInt8 = 5121, Int16 = 5122, UInt16 = 5123, UInt32 = 5125, Float = 5126 };

/// Bytes of one number; 0 for what is no component type.
int sizeOf(qint64 type)
{
    switch (type) {
    case Int8:
    case UInt8:
        return 1;
    case Int16:
    case UInt16:
        return 2;
    case UInt32:
    case Float:
        return 4;
    default:
        return 0;
    }
}

/// What a whole number is divided by to become a share of its range.
float rangeOf(int type)
{
    switch (type) {
    case Int8:
        return 127;
    case UInt8:
        return 255;
    case Int16:
        return 32767;
    case UInt16:
        return 65535;
    default:
        return 4294967295.0F;
    }
}

uint32_t wholeAt(const char *data, int type)
{
    switch (type) {
    case UInt8:
        return quint8(*data);
    case UInt16:
        return qFromLittleEndian<quint16>(data);
    default:
        return qFromLittleEndian<quint32>(data);
    }
}

float numberAt(const char *data, int type)
{
    switch (type) {
    case Int8:
        return float(qint8(*data));
    case Int16:
        return float(qFromLittleEndian<qint16>(data));
    case Float:
        return qFromLittleEndian<float>(data);
    default:
        return float(wholeAt(data, type));
    }
}

int componentsOf(const JsonValue &accessor)
{
    const JsonValue type = accessor.find(QLatin1String("type"));
    const QString name = type.isString() ? type.toText() : QString();
    static const QStringList names{QStringLiteral("SCALAR"), QStringLiteral("VEC2"), QStringLiteral("VEC3"),
                                   QStringLiteral("VEC4")};
    return names.indexOf(name) + 1;
}

} // namespace

GltfAccessors::GltfAccessors(const JsonValue &root, GltfBuffers &buffers)
    : m_accessors(GltfMember::elements(root.find(QLatin1String("accessors")))),
      m_views(GltfMember::elements(root.find(QLatin1String("bufferViews")))),
      m_buffers(buffers)
{}

bool GltfAccessors::fail(const QString &reason)
{
    m_reason = reason;
    return false;
}

JsonValue GltfAccessors::accessorAt(const JsonValue &index)
{
    const qint32 place = GltfMember::index(index, m_accessors.size());
    if (place >= 0)
        return m_accessors[size_t(place)];
    fail(tr("they refer to an accessor that is not there"));
    return {};
}

bool GltfAccessors::layOut(const JsonValue &accessor, int components, Layout &layout)
{
    if (!accessor.isPresent())
        return false;
    const qint64 type = GltfMember::wholeNumber(accessor.find(QLatin1String("componentType"))).value_or(0);
    const qint64 count = GltfMember::wholeNumber(accessor.find(QLatin1String("count"))).value_or(-1);
    const JsonValue normalized = accessor.find(QLatin1String("normalized"));
    layout.type = int(type);
    layout.count = count;
    layout.components = components;
    layout.isNormalized = normalized.isPresent() && normalized.toBool() && type != Float;
    if (sizeOf(type) == 0 || componentsOf(accessor) != components)
        return fail(tr("their numbers are of another kind than expected"));
    if (count < 0 || count > MostElements)
        return fail(tr("they say no sensible number of elements"));
    if (accessor.find(QLatin1String("bufferView")).isPresent())
        return place(accessor, layout);
    return count <= MostZeros || fail(tr("they say no sensible number of elements"));
}

/// Finds the bytes that `holder` refers to by its `bufferView` and `byteOffset`.
bool GltfAccessors::place(const JsonValue &holder, Layout &layout)
{
    const qint32 index = GltfMember::index(holder.find(QLatin1String("bufferView")), m_views.size());
    if (index < 0)
        return fail(tr("they refer to a buffer view that is not there"));
    const JsonValue view = m_views[size_t(index)];
    if (GltfMember::extension(view, QLatin1String("EXT_meshopt_compression")).isPresent())
        return fail(tr("they are compressed (EXT_meshopt_compression)"));
    const auto buffer = GltfMember::wholeNumber(view.find(QLatin1String("buffer")));
    const auto start = GltfMember::wholeNumber(view, QLatin1String("byteOffset"), 0);
    const auto length = GltfMember::wholeNumber(view.find(QLatin1String("byteLength")));
    const auto offset = GltfMember::wholeNumber(holder, QLatin1String("byteOffset"), 0);
    const auto stride = GltfMember::wholeNumber(view, QLatin1String("byteStride"), 0);
    if (!buffer || !start || !length || !offset || !stride || *stride > 255)
        return fail(tr("buffer view %1 is damaged").arg(index));
    QString reason;
    const QByteArray &bytes = m_buffers.bytes(*buffer, reason);
    if (!reason.isEmpty())
        return fail(reason);
    const qint64 element = qint64(sizeOf(layout.type)) * layout.components;
    layout.stride = *stride > 0 ? *stride : element;
    const qint64 there = qMin(*length, bytes.size() - *start);
    const qint64 needed = layout.count == 0 ? 0 : layout.stride * (layout.count - 1) + element;
    if (*start > bytes.size() || *offset > there || needed > there - *offset)
        return fail(tr("they reach beyond the end of their buffer"));
    layout.data = bytes.constData() + *start + *offset;
    return true;
}

bool GltfAccessors::readSparse(const JsonValue &accessor, const Layout &layout, Sparse &sparse)
{
    const JsonValue value = accessor.find(QLatin1String("sparse"));
    if (!value.isPresent())
        return true;
    const JsonValue indices = value.find(QLatin1String("indices"));
    const qint64 count = GltfMember::wholeNumber(value.find(QLatin1String("count"))).value_or(-1);
    Layout places;
    places.type = int(GltfMember::wholeNumber(indices.find(QLatin1String("componentType"))).value_or(0));
    places.count = count;
    if (count < 0 || count > layout.count
        || (places.type != UInt8 && places.type != UInt16 && places.type != UInt32))
        return fail(tr("the changes to them are damaged"));
    sparse.values = layout;
    sparse.values.count = count;
    if (!place(indices, places) || !place(value.find(QLatin1String("values")), sparse.values))
        return false;
    sparse.places.reserve(size_t(count));
    for (qint64 i = 0; i < count; ++i) {
        sparse.places.push_back(wholeAt(places.data + i * places.stride, places.type));
        if (sparse.places.back() >= layout.count)
            return fail(tr("the changes to them are damaged"));
    }
    return true;
}

void GltfAccessors::decode(const Layout &layout, float *numbers, qint64 element)
{
    const char *data = layout.data + element * layout.stride;
    const int size = sizeOf(layout.type);
    const float scale = layout.isNormalized ? 1 / rangeOf(layout.type) : 1;
    for (int i = 0; i < layout.components; ++i) {
        const float number = numberAt(data + i * size, layout.type) * scale;
        numbers[i] = layout.isNormalized ? std::max(number, -1.0F) : number;
    }
}

bool GltfAccessors::readFloats(const JsonValue &index, int components, std::vector<float> &numbers)
{
    const JsonValue accessor = accessorAt(index);
    Layout layout;
    Sparse sparse;
    if (!layOut(accessor, components, layout) || !readSparse(accessor, layout, sparse))
        return false;
    numbers.assign(size_t(layout.count * components), 0.0F);
    for (qint64 i = 0; layout.data && i < layout.count; ++i)
        decode(layout, &numbers[size_t(i * components)], i);
    for (size_t i = 0; i < sparse.places.size(); ++i)
        decode(sparse.values, &numbers[size_t(sparse.places[i]) * size_t(components)], qint64(i));
    return true;
}

bool GltfAccessors::readIndices(const JsonValue &index, std::vector<uint32_t> &numbers)
{
    const JsonValue accessor = accessorAt(index);
    Layout layout;
    Sparse sparse;
    if (!layOut(accessor, 1, layout) || !readSparse(accessor, layout, sparse))
        return false;
    if (layout.type != UInt8 && layout.type != UInt16 && layout.type != UInt32)
        return fail(tr("their numbers are of another kind than expected"));
    numbers.assign(size_t(layout.count), 0U);
    for (qint64 i = 0; layout.data && i < layout.count; ++i)
        numbers[size_t(i)] = wholeAt(layout.data + i * layout.stride, layout.type);
    for (size_t i = 0; i < sparse.places.size(); ++i)
        numbers[sparse.places[i]] = wholeAt(sparse.values.data + qint64(i) * sparse.values.stride,
                                            layout.type);
    return true;
}

} // namespace interchange
