#pragma once

#include "SceneBox.h"
#include "ViewRay.h"
#include "ViewVolume.h"

#include <functional>
#include <vector>

/// Boxes in a tree of boxes, so that those on a ray or in a part of the viewport are found without looking at all.
class BoxTree
{
public:
    /// Empty boxes are never found.
    explicit BoxTree(const std::vector<SceneBox> &boxes = {});

    /// Where on the ray what is in box `index` is hit; not below 0, infinity where it is not.
    using HitTest = std::function<float(quint32 index)>;
    /// The first thing on the ray: asks for the boxes that it goes through and that can still be nearer.
    /// @param distance in: nothing beyond counts; out: where the hit is
    /// @return the index of the box; -1 where nothing is hit
    qint64 firstHit(const ViewRay &ray, const HitTest &test, float &distance) const;

    using Found = std::function<void(quint32 index, ViewVolume::Overlap overlap)>;
    /// Calls `found` for every box that is in the volume, wholly or with a part.
    void find(const ViewVolume &volume, const Found &found) const;

    const SceneBox &bounds() const { return m_bounds; }

private:
    /// The boxes m_order[first .. first + count); inner nodes have their children at `child` and `child + 1`.
    struct Node
    {
        SceneBox box;
        quint32 first = 0;
        quint32 count = 0;
        quint32 child = 0;
    };

    void split(quint32 node);

    std::vector<SceneBox> m_boxes;
    std::vector<quint32> m_order;
    std::vector<Node> m_nodes;
    SceneBox m_bounds;
};
