#include <interchange/geometry/GltfMeshes.h>

#include <interchange/geometry/GltfAccessors.h>
#include <interchange/geometry/GltfMember.h>
#include <interchange/geometry/GltfTroubles.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace interchange {

namespace {

enum Mode { Triangles = 4, Strip = 5, Fan = 6 };

using Indices = std::vector<uint32_t>;

/// Every other triangle of a strip is turned, so that all of them show the same side.
Indices trianglesOfStrip(const Indices &strip)
{
    Indices triangles;
    for (size_t i = 2; i < strip.size(); ++i) {
        const bool isTurned = i % 2 == 1;
        triangles.insert(triangles.end(),
                         {strip[i - 2], strip[isTurned ? i : i - 1], strip[isTurned ? i - 1 : i]});
    }
    return triangles;
}

Indices trianglesOfFan(const Indices &fan)
{
    Indices triangles;
    for (size_t i = 2; i < fan.size(); ++i)
        triangles.insert(triangles.end(), {fan[0], fan[i - 1], fan[i]});
    return triangles;
}

bool areFinite(const std::vector<float> &numbers)
{
    // Beyond this, products of two of them are no numbers any more.
    constexpr float largest = 1e15F;
    return std::all_of(numbers.begin(), numbers.end(),
                       [](float number) { return std::isfinite(number) && std::abs(number) < largest; });
}

/// False where one has no direction.
bool makeUnit(std::vector<float> &normals)
{
    for (size_t i = 0; i + 2 < normals.size(); i += 3) {
        const float length = std::hypot(normals[i], normals[i + 1], normals[i + 2]);
        if (length < 1e-6F)
            return false;
        for (size_t k = i; k < i + 3; ++k)
            normals[k] /= length;
    }
    return true;
}

} // namespace

GltfMeshes::GltfMeshes(GltfAccessors &accessors, GltfTroubles &troubles)
    : m_accessors(accessors), m_troubles(troubles)
{}

SceneGeometry::Mesh GltfMeshes::read(const JsonValue &mesh, size_t index, size_t materialCount)
{
    SceneGeometry::Mesh made;
    for (const JsonValue &primitive : GltfMember::elements(mesh.find(QLatin1String("primitives")))) {
        SceneGeometry::Part part;
        m_reason.clear();
        if (readPart(primitive, part)) {
            part.material = GltfMember::index(primitive.find(QLatin1String("material")), materialCount);
            made.parts.push_back(std::move(part));
        } else if (!m_reason.isEmpty()) {
            m_troubles.add(tr("A part of mesh %1 is not drawn: %2.").arg(QString::number(index), m_reason));
        }
    }
    return made;
}

bool GltfMeshes::fail(const QString &reason)
{
    m_reason = reason;
    return false;
}

bool GltfMeshes::readPart(const JsonValue &primitive, SceneGeometry::Part &part)
{
    const auto mode = GltfMember::wholeNumber(primitive, QLatin1String("mode"), Triangles);
    if (!mode || *mode > Fan)
        return fail(tr("it does not say what it is made of"));
    if (*mode < Triangles) {
        m_troubles.add(tr("Points and lines are not drawn."));
        return false;
    }
    if (GltfMember::extension(primitive, QLatin1String("KHR_draco_mesh_compression")).isPresent())
        return fail(tr("it is compressed (KHR_draco_mesh_compression)"));
    const JsonValue attributes = primitive.find(QLatin1String("attributes"));
    if (!readVertices(attributes, part) || !readTriangles(primitive, *mode, part))
        return false;
    readNormals(attributes, part);
    m_vertices += part.positions.size() / 3;
    m_indices += part.indices.size();
    return true;
}

bool GltfMeshes::readVertices(const JsonValue &attributes, SceneGeometry::Part &part)
{
    const JsonValue positions = attributes.find(QLatin1String("POSITION"));
    if (!positions.isPresent())
        return fail(tr("it has no positions"));
    if (!m_accessors.readFloats(positions, 3, part.positions))
        return fail(tr("its positions cannot be read, because %1").arg(m_accessors.reason()));
    if (m_vertices + part.positions.size() / 3 > MostVertices)
        return fail(tr("the scene has more vertices than can be drawn"));
    if (!areFinite(part.positions))
        return fail(tr("some of its positions are no numbers"));
    return true;
}

/// Without normals, or with bad ones, faces are shaded by the way they lie.
void GltfMeshes::readNormals(const JsonValue &attributes, SceneGeometry::Part &part)
{
    const JsonValue normals = attributes.find(QLatin1String("NORMAL"));
    const bool isGood = normals.isPresent() && m_accessors.readFloats(normals, 3, part.normals)
                        && part.normals.size() == part.positions.size() && areFinite(part.normals)
                        && makeUnit(part.normals);
    if (!isGood)
        part.normals.clear();
}

bool GltfMeshes::readTriangles(const JsonValue &primitive, qint64 mode, SceneGeometry::Part &part)
{
    const size_t vertices = part.positions.size() / 3;
    const JsonValue indices = primitive.find(QLatin1String("indices"));
    if (!indices.isPresent()) {
        part.indices.resize(vertices);
        std::iota(part.indices.begin(), part.indices.end(), 0U);
    } else if (!m_accessors.readIndices(indices, part.indices)) {
        return fail(tr("its indices cannot be read, because %1").arg(m_accessors.reason()));
    }
    const auto isBeyond = [vertices](uint32_t index) { return index >= vertices; };
    if (std::any_of(part.indices.begin(), part.indices.end(), isBeyond))
        return fail(tr("its indices refer to vertices that are not there"));
    if (mode == Strip)
        part.indices = trianglesOfStrip(part.indices);
    else if (mode == Fan)
        part.indices = trianglesOfFan(part.indices);
    part.indices.resize(part.indices.size() / 3 * 3);
    return m_indices + part.indices.size() <= MostIndices
           || fail(tr("the scene has more triangles than can be drawn"));
}

} // namespace interchange
