#pragma once

#include "BoxTree.h"

#include "interchange/geometry/SceneGeometry.h"

#include <memory>

/// The triangles of one mesh, to be hit. Its tree is made when somebody first aims at the mesh.
class MeshShape
{
public:
    /// @param mesh outlives the shape
    explicit MeshShape(const interchange::SceneGeometry::Mesh &mesh);

    /// In the mesh's own space; empty for a mesh without triangles.
    const SceneBox &bounds() const { return m_bounds; }
    /// Where on the ray the first triangle is hit, from either side; `distance` where none is nearer.
    float hit(const ViewRay &ray, float distance) const;
    /// Whether any triangle is in the volume.
    bool touches(const ViewVolume &volume) const;

private:
    struct Triangle
    {
        QVector3D a, b, c;
    };

    const BoxTree &tree() const;

    std::vector<Triangle> triangles() const;

    const interchange::SceneGeometry::Mesh &m_mesh;
    SceneBox m_bounds;
    mutable std::vector<Triangle> m_triangles;
    mutable std::unique_ptr<BoxTree> m_tree;
};
