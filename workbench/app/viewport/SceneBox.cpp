#include "SceneBox.h"

#include <algorithm>

void SceneBox::add(const QVector3D &point)
{
    for (int axis = 0; axis < 3; ++axis) {
        least[axis] = std::min(least[axis], point[axis]);
        most[axis] = std::max(most[axis], point[axis]);
    }
}

void SceneBox::add(const SceneBox &box)
{
    if (!box.isEmpty()) {
        add(box.least);
        add(box.most);
    }
}

std::array<QVector3D, 8> SceneBox::corners() const
{
    std::array<QVector3D, 8> all;
    for (size_t i = 0; i < all.size(); ++i) {
        all[i] = QVector3D((i & 1) != 0 ? most.x() : least.x(), (i & 2) != 0 ? most.y() : least.y(),
                           (i & 4) != 0 ? most.z() : least.z());
    }
    return all;
}

SceneBox SceneBox::mapped(const QMatrix4x4 &matrix) const
{
    SceneBox box;
    if (!isEmpty()) {
        for (const QVector3D &corner : corners()) {
            box.add(matrix.map(corner));
        }
    }
    return box;
}
