#include "OrbitCamera.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

constexpr float degreesPerPixel = 0.4F;
// Straight from above, up would be nowhere.
constexpr float steepest = 89.5F;
/// How much of the viewport a box fills that was fitted.
constexpr float share = 0.9F;
/// Of the scene: the distance to what has no size.
constexpr float sizeless = 0.3F;
constexpr float smallest = 0.1F;
constexpr float closest = 1e-4F;
constexpr float farthest = 100;

} // namespace

void OrbitCamera::setSize(const QSizeF &size)
{
    m_size = QSizeF(std::max(size.width(), 1.0), std::max(size.height(), 1.0));
}

void OrbitCamera::resetDirection()
{
    m_yaw = 35;
    m_pitch = 25;
}

void OrbitCamera::orbit(const QPointF &way)
{
    m_yaw = std::fmod(m_yaw - float(way.x()) * degreesPerPixel, 360.0F);
    m_pitch = std::clamp(m_pitch + float(way.y()) * degreesPerPixel, -steepest, steepest);
}

void OrbitCamera::pan(const QPointF &way)
{
    const QMatrix4x4 turned = view().transposed();
    const QVector3D right = turned.mapVector({1, 0, 0});
    const QVector3D up = turned.mapVector({0, 1, 0});
    m_target += (up * float(way.y()) - right * float(way.x())) * pixel();
}

void OrbitCamera::zoom(float factor, const QPointF &place)
{
    const float radius = std::max(m_bounds.radius(), 1e-3F);
    const float wanted = std::clamp(m_distance / factor, radius * closest, radius * farthest);
    const QPointF away = place - QPointF(m_size.width() / 2, m_size.height() / 2);
    const float before = pixel();
    m_distance = wanted;
    const float less = 1 - pixel() / before;
    // The place is farther from the middle, in lengths, by what a pixel shows less now.
    const QMatrix4x4 turned = view().transposed();
    const QVector3D right = turned.mapVector({1, 0, 0});
    const QVector3D up = turned.mapVector({0, 1, 0});
    m_target += (right * float(away.x()) - up * float(away.y())) * before * less;
}

/// As near as all corners of the box allow.
void OrbitCamera::fit(const SceneBox &box)
{
    if (box.isEmpty()) {
        return;
    }
    const float vertical = std::tan(qDegreesToRadians(VerticalAngle) / 2) * share;
    const float horizontal = vertical * float(m_size.width() / m_size.height());
    m_target = box.center();
    m_distance = 1;
    const QMatrix4x4 turned = view();
    float distance = 0;
    for (const QVector3D &corner : box.corners()) {
        const QVector3D away = turned.mapVector(corner - m_target);
        const float needed = std::max(std::abs(away.x()) / horizontal, std::abs(away.y()) / vertical);
        distance = std::max(distance, needed + away.z());
    }
    const float usual = std::max(m_bounds.radius() * sizeless, smallest);
    m_distance = std::max(distance, box.radius() > 0 ? box.radius() * 0.1F : usual);
}

QVector3D OrbitCamera::backward() const
{
    const float yaw = qDegreesToRadians(m_yaw);
    const float pitch = qDegreesToRadians(m_pitch);
    return {std::cos(pitch) * std::sin(yaw), std::sin(pitch), std::cos(pitch) * std::cos(yaw)};
}

QVector3D OrbitCamera::eye() const
{
    return m_target + backward() * m_distance;
}

QMatrix4x4 OrbitCamera::view() const
{
    QMatrix4x4 matrix;
    matrix.lookAt(eye(), m_target, {0, 1, 0});
    return matrix;
}

QMatrix4x4 OrbitCamera::projection() const
{
    const float radius = std::max(m_bounds.radius(), m_distance * 0.5F) * 1.1F;
    const float away = m_bounds.isEmpty() ? m_distance : (eye() - m_bounds.center()).length();
    const float zFar = std::max(away + radius, m_distance * 2);
    // Nothing is seen of what is nearer; a smaller share leaves too little depth to tell faces apart.
    const float zNear = std::max(away - radius, std::min(zFar * 1e-4F, m_distance * 0.01F));
    QMatrix4x4 matrix;
    matrix.perspective(VerticalAngle, float(m_size.width() / m_size.height()), zNear, zFar);
    return matrix;
}

QPointF OrbitCamera::relative(const QPointF &place) const
{
    return {2 * place.x() / m_size.width() - 1, 1 - 2 * place.y() / m_size.height()};
}

ViewRay OrbitCamera::ray(const QPointF &place) const
{
    const float half = std::tan(qDegreesToRadians(VerticalAngle) / 2);
    const QPointF at = relative(place);
    const QVector3D seen(float(at.x()) * half * float(m_size.width() / m_size.height()), float(at.y()) * half,
                         -1);
    return {eye(), view().transposed().mapVector(seen).normalized()};
}

QRectF OrbitCamera::part(const QRectF &rect) const
{
    return QRectF(relative(rect.topLeft()), relative(rect.bottomRight())).normalized();
}

float OrbitCamera::pixel() const
{
    return 2 * m_distance * std::tan(qDegreesToRadians(VerticalAngle) / 2) / float(m_size.height());
}
