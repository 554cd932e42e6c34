#pragma once

#include <QVector3D>

/// What is seen at one point of the viewport: all points origin + t * direction with t >= 0.
struct ViewRay
{
    QVector3D origin;
    QVector3D direction;
};
