#include "BoxTree.h"

#include <algorithm>
#include <limits>

namespace {

constexpr quint32 leafSize = 4;
constexpr float infinity = std::numeric_limits<float>::infinity();

/// Where the ray comes into the box; infinity where it passes by.
float entry(const SceneBox &box, const ViewRay &ray)
{
    float from = 0;
    float to = infinity;
    for (int axis = 0; axis < 3; ++axis) {
        const float direction = ray.direction[axis];
        if (direction == 0.0F) {
            if (ray.origin[axis] < box.least[axis] || ray.origin[axis] > box.most[axis]) {
                return infinity;
            }
            continue;
        }
        const float a = (box.least[axis] - ray.origin[axis]) / direction;
        const float b = (box.most[axis] - ray.origin[axis]) / direction;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    }
    return from <= to ? from : infinity;
}

int longestAxis(const QVector3D &size)
{
    int axis = size.y() > size.x() ? 1 : 0;
    return size.z() > size[axis] ? 2 : axis;
}

} // namespace

BoxTree::BoxTree(const std::vector<SceneBox> &boxes) : m_boxes(boxes)
{
    for (size_t i = 0; i < boxes.size(); ++i) {
        if (!boxes[i].isEmpty()) {
            m_order.push_back(quint32(i));
            m_bounds.add(boxes[i]);
        }
    }
    if (m_order.empty()) {
        return;
    }
    m_nodes.push_back({m_bounds, 0, quint32(m_order.size()), 0});
    // Grows while it is walked over.
    for (quint32 node = 0; node < m_nodes.size(); ++node) {
        if (m_nodes[node].count > leafSize) {
            split(node);
        }
    }
}

/// In the middle of the order along the longest side: depth stays logarithmic whatever the boxes are.
void BoxTree::split(quint32 node)
{
    const Node whole = m_nodes[node];
    const int axis = longestAxis(whole.box.size());
    const auto begin = m_order.begin() + whole.first;
    const quint32 half = whole.count / 2;
    std::nth_element(begin, begin + half, begin + whole.count, [this, axis](quint32 a, quint32 b) {
        return m_boxes[a].center()[axis] < m_boxes[b].center()[axis];
    });
    Node lower{{}, whole.first, half, 0};
    Node upper{{}, whole.first + half, whole.count - half, 0};
    for (Node *child : {&lower, &upper}) {
        for (quint32 i = child->first; i < child->first + child->count; ++i) {
            child->box.add(m_boxes[m_order[i]]);
        }
    }
    m_nodes[node].child = quint32(m_nodes.size());
    m_nodes.push_back(lower);
    m_nodes.push_back(upper);
}

qint64 BoxTree::firstHit(const ViewRay &ray, const HitTest &test, float &distance) const
{
    qint64 first = -1;
    std::vector<quint32> waiting;
    if (!m_nodes.empty()) {
        waiting.push_back(0);
    }
    while (!waiting.empty()) {
        const Node &node = m_nodes[waiting.back()];
        waiting.pop_back();
        if (entry(node.box, ray) >= distance) {
            continue;
        }
        if (node.child != 0) {
            const bool isLowerNearer = entry(m_nodes[node.child].box, ray)
                                       <= entry(m_nodes[node.child + 1].box, ray);
            waiting.push_back(node.child + (isLowerNearer ? 1 : 0));
            waiting.push_back(node.child + (isLowerNearer ? 0 : 1));
            continue;
        }
        for (quint32 i = node.first; i < node.first + node.count; ++i) {
            const quint32 index = m_order[i];
            const float hit = entry(m_boxes[index], ray) < distance ? test(index) : infinity;
            if (hit < distance) {
                distance = hit;
                first = index;
            }
        }
    }
    return first;
}

void BoxTree::find(const ViewVolume &volume, const Found &found) const
{
    std::vector<quint32> waiting;
    if (!m_nodes.empty()) {
        waiting.push_back(0);
    }
    while (!waiting.empty()) {
        const Node &node = m_nodes[waiting.back()];
        waiting.pop_back();
        const ViewVolume::Overlap overlap = volume.overlap(node.box);
        if (overlap == ViewVolume::Overlap::None) {
            continue;
        }
        if (overlap == ViewVolume::Overlap::Some && node.child != 0) {
            waiting.push_back(node.child + 1);
            waiting.push_back(node.child);
            continue;
        }
        for (quint32 i = node.first; i < node.first + node.count; ++i) {
            const quint32 index = m_order[i];
            const ViewVolume::Overlap own = volume.overlap(m_boxes[index]);
            if (own != ViewVolume::Overlap::None) {
                found(index, own);
            }
        }
    }
}
