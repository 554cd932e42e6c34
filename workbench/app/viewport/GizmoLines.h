#pragma once

#include "interchange/geometry/SceneGeometry.h"

#include <QMatrix4x4>
#include <QVector3D>

#include <vector>

/// Draws one camera or light with lines, where a node stands and as it is turned, but not as it is scaled.
class GizmoLines
{
public:
    /// @param world of the node; @param size of the drawing, in lengths of the scene
    GizmoLines(const QMatrix4x4 &world, float size);

    /// The part of space that it sees, with a mark at its upper side.
    void addCamera(const interchange::SceneGeometry::Camera &camera);
    /// A bulb with rays, an arrow, or a cone.
    void addLight(const interchange::SceneGeometry::Light &light);

    /// Two points a line, in the scene's space.
    const std::vector<QVector3D> &points() const { return m_points; }

private:
    void line(const QVector3D &from, const QVector3D &to);
    void ring(float radius, float z);
    void bulb();

    QMatrix4x4 m_place;
    std::vector<QVector3D> m_points;
};
