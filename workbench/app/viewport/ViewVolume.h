#pragma once

#include "SceneBox.h"

#include <QRectF>
#include <QVector4D>

/// What is seen in a rectangle of the viewport: the part of space that a matrix maps into the cube from -1 to 1.
class ViewVolume
{
public:
    enum class Overlap { None, Some, All };

    /// @param viewProjection of the whole viewport; @param part of the viewport, whose corners are (-1, -1) and (1, 1)
    ViewVolume(const QMatrix4x4 &viewProjection, const QRectF &part);

    /// The same volume for things that are moved by `matrix` first.
    ViewVolume mapped(const QMatrix4x4 &matrix) const;

    /// How much of a box is in it; Some can be wrong for a box beside a corner.
    Overlap overlap(const SceneBox &box) const;
    bool touches(const QVector3D &a, const QVector3D &b) const;
    /// Whether any point of the triangle is in it.
    bool touches(const QVector3D &a, const QVector3D &b, const QVector3D &c) const;

private:
    explicit ViewVolume(const QMatrix4x4 &matrix) : m_matrix(matrix) {}
    QVector4D place(const QVector3D &point) const { return m_matrix * QVector4D(point, 1); }

    QMatrix4x4 m_matrix;
};
