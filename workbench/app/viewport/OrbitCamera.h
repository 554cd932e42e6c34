#pragma once

#include "SceneBox.h"
#include "ViewRay.h"

#include <QPointF>
#include <QSizeF>

/// The viewport's own eye: it turns around a target and looks at it, with y up. Angles in degrees, lengths those of
/// the scene, ways of the mouse in logical pixels.
class OrbitCamera
{
public:
    /// The whole angle between the lower and the upper edge of the viewport.
    static constexpr float VerticalAngle = 40;

    /// What has to be seen when it is looked at: near and far are chosen by it.
    void setScene(const SceneBox &bounds) { m_bounds = bounds; }
    /// The viewport; never empty.
    void setSize(const QSizeF &size);
    const QSizeF &size() const { return m_size; }

    /// Turns around the target as if it were dragged along.
    void orbit(const QPointF &way);
    /// Moves along the picture, so that what is as far as the target follows the mouse.
    void pan(const QPointF &way);
    /// Comes closer by a factor above 1, and goes away by one below; what is as far as the target and stands at
    /// `place` in the viewport stays there.
    void zoom(float factor, const QPointF &place);
    /// Looks at all of a box from where it looks now. An empty box changes nothing; one without size is looked at
    /// from a distance that suits the scene.
    void fit(const SceneBox &box);
    /// The direction that a scene is first looked at from: from above, in front and one side.
    void resetDirection();

    QVector3D target() const { return m_target; }
    float distance() const { return m_distance; }
    QVector3D eye() const;
    QMatrix4x4 view() const;
    QMatrix4x4 projection() const;
    QMatrix4x4 viewProjection() const { return projection() * view(); }
    /// What is seen at a place in the viewport.
    ViewRay ray(const QPointF &place) const;
    /// A rectangle of the viewport in coordinates from -1 to 1, y up.
    QRectF part(const QRectF &rect) const;

private:
    QVector3D backward() const;
    QPointF relative(const QPointF &place) const;
    /// Length at the target that a pixel shows.
    float pixel() const;

    SceneBox m_bounds;
    QSizeF m_size{1, 1};
    QVector3D m_target;
    float m_distance = 5;
    float m_yaw = 35;
    float m_pitch = 25;
};
