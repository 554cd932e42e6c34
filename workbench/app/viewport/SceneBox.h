#pragma once

#include <QMatrix4x4>
#include <QVector3D>

#include <array>
#include <limits>

/// A box along the axes. Starts empty: it holds nothing until something is added.
struct SceneBox
{
    QVector3D least{infinity, infinity, infinity};
    QVector3D most{-infinity, -infinity, -infinity};

    bool isEmpty() const { return least.x() > most.x(); }
    QVector3D center() const { return (least + most) * 0.5F; }
    QVector3D size() const { return isEmpty() ? QVector3D() : most - least; }
    /// Half of the longest way through the box; 0 for an empty one.
    float radius() const { return size().length() * 0.5F; }

    void add(const QVector3D &point);
    void add(const SceneBox &box);
    std::array<QVector3D, 8> corners() const;
    /// A box around this one moved by a matrix; empty for an empty one.
    SceneBox mapped(const QMatrix4x4 &matrix) const;

private:
    static constexpr float infinity = std::numeric_limits<float>::infinity();
};
