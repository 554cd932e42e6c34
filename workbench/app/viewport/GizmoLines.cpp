#include "GizmoLines.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

using Light = interchange::SceneGeometry::Light;

namespace {

constexpr int ringSides = 16;
constexpr float usualAspect = 1.5F;

/// A direction of unit length; `other` where there is none.
QVector3D directionOf(const QVector4D &column, const QVector3D &other)
{
    const QVector3D direction = column.toVector3D().normalized();
    return direction.isNull() ? other : direction;
}

} // namespace

GizmoLines::GizmoLines(const QMatrix4x4 &world, float size)
{
    const std::array<QVector3D, 3> axes{directionOf(world.column(0), {1, 0, 0}),
                                        directionOf(world.column(1), {0, 1, 0}),
                                        directionOf(world.column(2), {0, 0, 1})};
    for (int i = 0; i < 3; ++i) {
        m_place.setColumn(i, QVector4D(axes[size_t(i)] * size, 0));
    }
    m_place.setColumn(3, QVector4D(world.column(3).toVector3D(), 1));
}

void GizmoLines::line(const QVector3D &from, const QVector3D &to)
{
    m_points.push_back(m_place.map(from));
    m_points.push_back(m_place.map(to));
}

void GizmoLines::ring(float radius, float z)
{
    const auto point = [radius, z](int i) {
        const auto angle = float(2 * M_PI * i / ringSides);
        return QVector3D(radius * std::cos(angle), radius * std::sin(angle), z);
    };
    for (int i = 0; i < ringSides; ++i) {
        line(point(i), point(i + 1));
    }
}

void GizmoLines::addCamera(const interchange::SceneGeometry::Camera &camera)
{
    const float angle = std::clamp(camera.verticalAngle, 0.2F, 2.0F);
    const float up = camera.isPerspective ? std::tan(angle / 2) : 0.5F;
    const float aspect = camera.aspect > 0 ? std::clamp(camera.aspect, 0.2F, 5.0F) : usualAspect;
    const float nearShare = camera.isPerspective ? 0 : 1;
    const std::array<QVector3D, 4> corners{QVector3D(-up * aspect, -up, -1), QVector3D(up * aspect, -up, -1),
                                           QVector3D(up * aspect, up, -1), QVector3D(-up * aspect, up, -1)};
    const auto nearCorner = [nearShare](const QVector3D &corner) {
        return QVector3D(corner.x() * nearShare, corner.y() * nearShare, 0);
    };
    for (size_t i = 0; i < corners.size(); ++i) {
        const QVector3D &next = corners[(i + 1) % corners.size()];
        line(corners[i], next);
        line(nearCorner(corners[i]), corners[i]);
        if (!camera.isPerspective) {
            line(nearCorner(corners[i]), nearCorner(next));
        }
    }
    const QVector3D top(0, up * 1.5F, -1);
    line(QVector3D(-up * 0.4F, up * 1.1F, -1), top);
    line(top, QVector3D(up * 0.4F, up * 1.1F, -1));
    line(QVector3D(-up * 0.4F, up * 1.1F, -1), QVector3D(up * 0.4F, up * 1.1F, -1));
}

/// Three rings are round from every side.
void GizmoLines::bulb()
{
    const QMatrix4x4 straight = m_place;
    ring(0.25F, 0);
    m_place.rotate(90, 1, 0, 0);
    ring(0.25F, 0);
    m_place = straight;
    m_place.rotate(90, 0, 1, 0);
    ring(0.25F, 0);
    m_place = straight;
}

void GizmoLines::addLight(const Light &light)
{
    bulb();
    if (light.type == Light::Type::Point) {
        for (const QVector3D &axis : {QVector3D(1, 0, 0), QVector3D(0, 1, 0), QVector3D(0, 0, 1)}) {
            line(axis * 0.35F, axis * 0.6F);
            line(axis * -0.35F, axis * -0.6F);
        }
    } else if (light.type == Light::Type::Directional) {
        line({0, 0, -0.25F}, {0, 0, -1.5F});
        line({0, 0, -1.5F}, {0.15F, 0, -1.2F});
        line({0, 0, -1.5F}, {-0.15F, 0, -1.2F});
        line({0, 0, -1.5F}, {0, 0.15F, -1.2F});
        line({0, 0, -1.5F}, {0, -0.15F, -1.2F});
    } else {
        const float radius = std::tan(std::clamp(light.outerAngle, 0.05F, 1.2F));
        ring(radius, -1);
        line({}, {radius, 0, -1});
        line({}, {-radius, 0, -1});
        line({}, {0, radius, -1});
        line({}, {0, -radius, -1});
    }
}
