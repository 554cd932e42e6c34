#include "SceneGizmos.h"

#include "GizmoLines.h"

#include "interchange/geometry/SceneGeometry.h"

#include <QVector2D>

#include <algorithm>

namespace {

/// Pixels beside a line that still are on it.
constexpr float reach = 6;

/// A line's nearest point to `place` in pixels, and its depth there.
struct NearPoint
{
    float distance;
    float depth;
};

QVector3D inPixels(const QVector4D &point, const QSizeF &viewport)
{
    return {(point.x() / point.w() + 1) * 0.5F * float(viewport.width()),
            (1 - point.y() / point.w()) * 0.5F * float(viewport.height()), point.z() / point.w()};
}

NearPoint nearest(const QVector3D &a, const QVector3D &b, const QVector2D &place)
{
    const QVector2D along = (b - a).toVector2D();
    const float length = along.lengthSquared();
    const float share = length > 0 ? std::clamp(QVector2D::dotProduct(place - a.toVector2D(), along) / length,
                                                0.0F, 1.0F)
                                   : 0;
    const QVector3D point = a + (b - a) * share;
    return {(point.toVector2D() - place).length(), point.z()};
}

} // namespace

SceneGizmos::SceneGizmos(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items,
                         float size)
{
    add(geometry, items, Cameras, size);
    m_cameraPoints = quint32(m_points.size());
    add(geometry, items, Lights, size);
    for (const QVector3D &point : m_points) {
        m_bounds.add(point);
    }
}

void SceneGizmos::add(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items,
                      Kind kind, float size)
{
    for (size_t i = 0; i < items.size(); ++i) {
        const auto &node = geometry.nodes[size_t(items[i].node)];
        // A node with both is a camera everywhere.
        const bool isOfKind = kind == Cameras ? node.camera >= 0 : node.light >= 0 && node.camera < 0;
        if (!isOfKind) {
            continue;
        }
        GizmoLines lines(items[i].world, size);
        if (kind == Cameras) {
            lines.addCamera(geometry.cameras[size_t(node.camera)]);
        } else {
            lines.addLight(geometry.lights[size_t(node.light)]);
        }
        m_gizmos.push_back({quint32(i), kind, quint32(m_points.size()), quint32(lines.points().size())});
        m_points.insert(m_points.end(), lines.points().begin(), lines.points().end());
    }
}

SceneBox SceneGizmos::boundsOf(const Gizmo &gizmo) const
{
    SceneBox box;
    for (quint32 i = gizmo.first; i < gizmo.first + gizmo.count; ++i) {
        box.add(m_points[i]);
    }
    return box;
}

const SceneGizmos::Gizmo *SceneGizmos::at(const QMatrix4x4 &viewProjection, const QSizeF &viewport,
                                          const QPointF &place, Kinds kinds, float &depth) const
{
    const Gizmo *found = nullptr;
    depth = 1;
    for (const Gizmo &gizmo : m_gizmos) {
        for (quint32 i = gizmo.first; kinds.testFlag(gizmo.kind) && i < gizmo.first + gizmo.count; i += 2) {
            const QVector4D a = viewProjection * QVector4D(m_points[i], 1);
            const QVector4D b = viewProjection * QVector4D(m_points[i + 1], 1);
            if (a.w() <= 0 || b.w() <= 0) {
                continue; // behind the eye
            }
            const NearPoint point = nearest(inPixels(a, viewport), inPixels(b, viewport), QVector2D(place));
            if (point.distance < reach && point.depth < depth) {
                depth = point.depth;
                found = &gizmo;
            }
        }
    }
    return found;
}

bool SceneGizmos::touches(const Gizmo &gizmo, const ViewVolume &volume) const
{
    for (quint32 i = gizmo.first; i < gizmo.first + gizmo.count; i += 2) {
        if (volume.touches(m_points[i], m_points[i + 1])) {
            return true;
        }
    }
    return false;
}
