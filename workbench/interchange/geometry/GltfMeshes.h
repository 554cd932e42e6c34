#pragma once

#include <interchange/geometry/SceneGeometry.h>
#include <interchange/json/JsonValue.h>

#include <QCoreApplication>

namespace interchange {

class GltfAccessors;
class GltfTroubles;

/// Makes triangles of the meshes of a glTF file. What is no triangle (points, lines) is left out.
class GltfMeshes
{
    Q_DECLARE_TR_FUNCTIONS(GltfMeshes)

public:
    /// Vertices and indices that a file's meshes may have together; what comes after that is left out.
    static constexpr size_t MostVertices = 50U * 1000 * 1000;
    static constexpr size_t MostIndices = 150U * 1000 * 1000;

    /// Both outlive the reader.
    GltfMeshes(GltfAccessors &accessors, GltfTroubles &troubles);

    /// @param index the mesh's in the file; @param materialCount materials that parts can refer to
    SceneGeometry::Mesh read(const JsonValue &mesh, size_t index, size_t materialCount);

private:
    bool readPart(const JsonValue &primitive, SceneGeometry::Part &part);
    bool readVertices(const JsonValue &attributes, SceneGeometry::Part &part);
    void readNormals(const JsonValue &attributes, SceneGeometry::Part &part);
    bool readTriangles(const JsonValue &primitive, qint64 mode, SceneGeometry::Part &part);
    bool fail(const QString &reason);

    GltfAccessors &m_accessors;
    GltfTroubles &m_troubles;
    size_t m_vertices = 0;
    size_t m_indices = 0;
    QString m_reason;
};

} // namespace interchange
