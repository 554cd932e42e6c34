#include "SceneBatches.h"

#include <QVector3D>

#include <algorithm>
#include <cmath>

using interchange::SceneGeometry;

namespace {

/// A colour's share of light as a screen wants it.
quint8 screenValue(double linear)
{
    const double value = linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
    return quint8(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

void turn(DrawVertex &vertex, const QVector3D &normal)
{
    const QVector3D unit = normal.normalized() * 127;
    vertex.nx = qint8(std::lround(unit.x()));
    vertex.ny = qint8(std::lround(unit.y()));
    vertex.nz = qint8(std::lround(unit.z()));
}

void put(DrawVertex &vertex, const QVector3D &place)
{
    vertex.x = place.x();
    vertex.y = place.y();
    vertex.z = place.z();
}

QVector3D vectorAt(const std::vector<float> &numbers, size_t index)
{
    return {numbers[index * 3], numbers[index * 3 + 1], numbers[index * 3 + 2]};
}

/// Normals stay upright on their faces under every matrix that has an inverse.
QMatrix4x4 matrixOfNormals(const QMatrix4x4 &world)
{
    const QMatrix3x3 part = world.normalMatrix();
    QMatrix4x4 matrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            matrix(row, column) = part(row, column);
        }
    }
    return matrix;
}

/// Without normals every triangle has corners of its own.
size_t verticesOf(const SceneGeometry::Part &part)
{
    return part.normals.empty() ? part.indices.size() : part.positions.size() / 3;
}

} // namespace

SceneBatches::SceneBatches(const SceneGeometry &geometry, const std::vector<SceneItem> &items)
    : m_materials(&geometry.materials), m_opaqueRuns(items.size()), m_translucentRuns(items.size())
{
    std::vector<Items> shownBy(geometry.meshes.size());
    for (size_t i = 0; i < items.size(); ++i) {
        const qint32 mesh = geometry.nodes[size_t(items[i].node)].mesh;
        if (mesh >= 0) {
            shownBy[size_t(mesh)].push_back(quint32(i));
        }
    }
    for (size_t i = 0; i < shownBy.size(); ++i) {
        if (!shownBy[i].empty()) {
            addMesh(geometry.meshes[i], shownBy[i], items);
        }
    }
    m_materials = nullptr;
}

bool SceneBatches::isTooMuch(const Mesh &mesh, size_t times)
{
    size_t vertices = 0;
    size_t indices = 0;
    for (const Part &part : mesh.parts) {
        vertices += verticesOf(part) * times;
        indices += part.indices.size() * times;
    }
    const size_t allIndices = m_opaque.size() + m_translucent.size() + m_shared.size();
    if (m_vertices.size() + vertices > MostVertices || allIndices + indices > MostIndices) {
        return true;
    }
    if (times > 1 && m_sharedVertices + vertices > MostSharedVertices) {
        return true;
    }
    m_sharedVertices += times > 1 ? vertices : 0;
    return false;
}

void SceneBatches::addMesh(const Mesh &mesh, const Items &shownBy, const std::vector<SceneItem> &items)
{
    if (isTooMuch(mesh, shownBy.size())) {
        addInstances(mesh, shownBy, items);
        return;
    }
    for (const quint32 item : shownBy) {
        for (const Part &part : mesh.parts) {
            const bool isOpaque = !isTranslucent(part);
            const Run run = addPart(part, items[item].world, isOpaque ? m_opaque : m_translucent);
            (isOpaque ? m_opaqueRuns : m_translucentRuns)[item].push_back(run);
        }
    }
}

void SceneBatches::addInstances(const Mesh &mesh, const Items &shownBy, const std::vector<SceneItem> &items)
{
    if (isTooMuch(mesh, 1)) {
        m_isComplete = false;
        return;
    }
    Instance instance;
    for (const bool isOpaque : {true, false}) {
        Run &run = isOpaque ? instance.opaque : instance.translucent;
        run.first = quint32(m_shared.size());
        for (const Part &part : mesh.parts) {
            run.count += isOpaque != isTranslucent(part) ? addPart(part, QMatrix4x4(), m_shared).count : 0;
        }
    }
    for (const quint32 item : shownBy) {
        instance.item = item;
        instance.world = items[item].world;
        m_instances.push_back(instance);
    }
}

bool SceneBatches::isTranslucent(const Part &part) const
{
    return part.material >= 0 && size_t(part.material) < m_materials->size()
           && (*m_materials)[size_t(part.material)].color.alpha() < 255;
}

DrawVertex SceneBatches::colored(const Part &part) const
{
    const bool hasMaterial = part.material >= 0 && size_t(part.material) < m_materials->size();
    const QColor color = hasMaterial ? (*m_materials)[size_t(part.material)].color
                                     : SceneGeometry::Material().color;
    DrawVertex vertex;
    vertex.red = screenValue(color.redF());
    vertex.green = screenValue(color.greenF());
    vertex.blue = screenValue(color.blueF());
    vertex.alpha = quint8(color.alpha());
    return vertex;
}

SceneBatches::Run SceneBatches::addPart(const Part &part, const QMatrix4x4 &world,
                                        std::vector<quint32> &indices)
{
    Run run;
    run.first = quint32(indices.size());
    if (part.normals.empty()) {
        addFlat(part, world, indices);
    } else {
        addSmooth(part, world, indices);
    }
    run.count = quint32(indices.size()) - run.first;
    return run;
}

void SceneBatches::addSmooth(const Part &part, const QMatrix4x4 &world, std::vector<quint32> &indices)
{
    const auto base = quint32(m_vertices.size());
    const QMatrix4x4 ofNormals = matrixOfNormals(world);
    DrawVertex vertex = colored(part);
    for (size_t i = 0; i < part.positions.size() / 3; ++i) {
        put(vertex, world.map(vectorAt(part.positions, i)));
        turn(vertex, ofNormals.mapVector(vectorAt(part.normals, i)));
        m_vertices.push_back(vertex);
    }
    std::transform(part.indices.begin(), part.indices.end(), std::back_inserter(indices),
                   [base](uint32_t index) { return base + index; });
}

void SceneBatches::addFlat(const Part &part, const QMatrix4x4 &world, std::vector<quint32> &indices)
{
    DrawVertex vertex = colored(part);
    for (size_t i = 0; i + 2 < part.indices.size(); i += 3) {
        const QVector3D a = world.map(vectorAt(part.positions, part.indices[i]));
        const QVector3D b = world.map(vectorAt(part.positions, part.indices[i + 1]));
        const QVector3D c = world.map(vectorAt(part.positions, part.indices[i + 2]));
        turn(vertex, QVector3D::crossProduct(b - a, c - a));
        for (const QVector3D &corner : {a, b, c}) {
            put(vertex, corner);
            indices.push_back(quint32(m_vertices.size()));
            m_vertices.push_back(vertex);
        }
    }
}

std::vector<quint32> SceneBatches::trianglesOf(const std::vector<bool> &marked) const
{
    std::vector<quint32> indices;
    const auto append = [&indices](const std::vector<quint32> &all, const std::vector<Run> &runs) {
        for (const Run &run : runs) {
            indices.insert(indices.end(), all.begin() + run.first, all.begin() + run.first + run.count);
        }
    };
    for (size_t i = 0; i < marked.size() && i < m_opaqueRuns.size(); ++i) {
        if (marked[i]) {
            append(m_opaque, m_opaqueRuns[i]);
            append(m_translucent, m_translucentRuns[i]);
        }
    }
    return indices;
}
