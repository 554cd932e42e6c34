#include "ViewVolume.h"

#include <QVarLengthArray>

#include <algorithm>

namespace {

constexpr int sides = 6;
// A triangle gains at most one corner at each side.
using Corners = QVarLengthArray<QVector4D, 10>;

/// How far a point is inside of one of the six sides; negative outside.
float inside(const QVector4D &point, int side)
{
    const float along = point[side / 2];
    return side % 2 == 0 ? point.w() + along : point.w() - along;
}

Corners clipped(const Corners &corners, int side)
{
    Corners kept;
    for (int i = 0; i < corners.size(); ++i) {
        const QVector4D &from = corners[i];
        const QVector4D &to = corners[(i + 1) % corners.size()];
        const float fromInside = inside(from, side);
        const float toInside = inside(to, side);
        if (fromInside >= 0) {
            kept.append(from);
        }
        if ((fromInside >= 0) != (toInside >= 0)) {
            kept.append(from + (to - from) * (fromInside / (fromInside - toInside)));
        }
    }
    return kept;
}

bool touchesCube(Corners corners)
{
    for (int side = 0; side < sides && !corners.isEmpty(); ++side) {
        corners = clipped(corners, side);
    }
    return !corners.isEmpty();
}

/// Maps a part of the viewport to all of it. No part is too narrow: a line touches what it crosses.
QMatrix4x4 enlarging(const QRectF &part)
{
    const float width = std::max(float(part.width()), 1e-6F);
    const float height = std::max(float(part.height()), 1e-6F);
    QMatrix4x4 matrix;
    matrix.scale(2 / width, 2 / height, 1);
    matrix.translate(-float(part.center().x()), -float(part.center().y()), 0);
    return matrix;
}

} // namespace

ViewVolume::ViewVolume(const QMatrix4x4 &viewProjection, const QRectF &part)
    : m_matrix(enlarging(part.normalized()) * viewProjection)
{}

ViewVolume ViewVolume::mapped(const QMatrix4x4 &matrix) const
{
    return ViewVolume(m_matrix * matrix);
}

ViewVolume::Overlap ViewVolume::overlap(const SceneBox &box) const
{
    if (box.isEmpty()) {
        return Overlap::None;
    }
    std::array<QVector4D, 8> corners;
    const std::array<QVector3D, 8> points = box.corners();
    std::transform(points.begin(), points.end(), corners.begin(),
                   [this](const QVector3D &point) { return place(point); });
    bool isAll = true;
    for (int side = 0; side < sides; ++side) {
        const auto isInside = [side](const QVector4D &corner) { return inside(corner, side) >= 0; };
        const auto count = std::count_if(corners.begin(), corners.end(), isInside);
        if (count == 0) {
            return Overlap::None;
        }
        isAll = isAll && count == 8;
    }
    return isAll ? Overlap::All : Overlap::Some;
}

bool ViewVolume::touches(const QVector3D &a, const QVector3D &b) const
{
    return touchesCube({place(a), place(b)});
}

bool ViewVolume::touches(const QVector3D &a, const QVector3D &b, const QVector3D &c) const
{
    return touchesCube({place(a), place(b), place(c)});
}
