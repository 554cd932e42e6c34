#include "MeshShape.h"

#include <limits>

namespace {

using Part = interchange::SceneGeometry::Part;

constexpr float infinity = std::numeric_limits<float>::infinity();

QVector3D cornerOf(const Part &part, uint32_t index)
{
    const float *place = &part.positions[size_t(index) * 3];
    return {place[0], place[1], place[2]};
}

/// Möller and Trumbore's, from both sides.
float hitOf(const QVector3D &a, const QVector3D &b, const QVector3D &c, const ViewRay &ray)
{
    const QVector3D ab = b - a;
    const QVector3D ac = c - a;
    const QVector3D across = QVector3D::crossProduct(ray.direction, ac);
    const float volume = QVector3D::dotProduct(ab, across);
    if (volume == 0.0F) {
        return infinity;
    }
    const QVector3D from = ray.origin - a;
    const float u = QVector3D::dotProduct(from, across) / volume;
    const QVector3D other = QVector3D::crossProduct(from, ab);
    const float v = QVector3D::dotProduct(ray.direction, other) / volume;
    const float distance = QVector3D::dotProduct(ac, other) / volume;
    return u >= 0 && v >= 0 && u + v <= 1 && distance >= 0 ? distance : infinity;
}

} // namespace

MeshShape::MeshShape(const interchange::SceneGeometry::Mesh &mesh) : m_mesh(mesh)
{
    for (const Part &part : mesh.parts) {
        for (const uint32_t index : part.indices) {
            m_bounds.add(cornerOf(part, index));
        }
    }
}

std::vector<MeshShape::Triangle> MeshShape::triangles() const
{
    std::vector<Triangle> all;
    for (const Part &part : m_mesh.parts) {
        for (size_t i = 0; i + 2 < part.indices.size(); i += 3) {
            all.push_back({cornerOf(part, part.indices[i]), cornerOf(part, part.indices[i + 1]),
                           cornerOf(part, part.indices[i + 2])});
        }
    }
    return all;
}

const BoxTree &MeshShape::tree() const
{
    if (!m_tree) {
        m_triangles = triangles();
        std::vector<SceneBox> boxes(m_triangles.size());
        for (size_t i = 0; i < boxes.size(); ++i) {
            boxes[i].add(m_triangles[i].a);
            boxes[i].add(m_triangles[i].b);
            boxes[i].add(m_triangles[i].c);
        }
        m_tree = std::make_unique<BoxTree>(boxes);
    }
    return *m_tree;
}

float MeshShape::hit(const ViewRay &ray, float distance) const
{
    const auto test = [this, &ray](quint32 index) {
        const Triangle &triangle = m_triangles[index];
        return hitOf(triangle.a, triangle.b, triangle.c, ray);
    };
    tree().firstHit(ray, test, distance);
    return distance;
}

bool MeshShape::touches(const ViewVolume &volume) const
{
    bool isTouched = false;
    tree().find(volume, [this, &volume, &isTouched](quint32 index, ViewVolume::Overlap overlap) {
        const Triangle &triangle = m_triangles[index];
        isTouched = isTouched || overlap == ViewVolume::Overlap::All
                    || volume.touches(triangle.a, triangle.b, triangle.c);
    });
    return isTouched;
}
