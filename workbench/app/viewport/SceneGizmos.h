#pragma once

#include "SceneBox.h"
#include "SceneItem.h"
#include "ViewVolume.h"

#include <QFlags>
#include <QPointF>
#include <QSizeF>

/// What stands in the scene for its cameras and lights: lines that show where they are and where they look.
class SceneGizmos
{
public:
    enum Kind { Cameras = 1, Lights = 2 };
    Q_DECLARE_FLAGS(Kinds, Kind)

    struct Gizmo
    {
        quint32 item = 0; ///< in the items that they were made of
        Kind kind = Cameras;
        quint32 first = 0; ///< in points(); two points a line
        quint32 count = 0;
    };

    SceneGizmos() = default;
    /// @param size of a gizmo, in lengths of the scene
    SceneGizmos(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items, float size);

    /// Cameras first.
    const std::vector<Gizmo> &all() const { return m_gizmos; }
    const std::vector<QVector3D> &points() const { return m_points; }
    /// How many of the points, from the first on, belong to cameras.
    quint32 cameraPoints() const { return m_cameraPoints; }
    SceneBox boundsOf(const Gizmo &gizmo) const;
    const SceneBox &bounds() const { return m_bounds; }

    /// The gizmo that has a line within a few pixels of a place in the viewport, the nearest to the eye; null where
    /// there is none. @param depth of the line there, -1 to 1
    const Gizmo *at(const QMatrix4x4 &viewProjection, const QSizeF &viewport, const QPointF &place,
                    Kinds kinds, float &depth) const;
    bool touches(const Gizmo &gizmo, const ViewVolume &volume) const;

private:
    void add(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items, Kind kind,
             float size);

    std::vector<Gizmo> m_gizmos;
    std::vector<QVector3D> m_points;
    quint32 m_cameraPoints = 0;
    SceneBox m_bounds;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(SceneGizmos::Kinds)
