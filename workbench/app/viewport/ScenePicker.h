#pragma once

#include "BoxTree.h"
#include "MeshShape.h"
#include "OrbitCamera.h"
#include "SceneGizmos.h"
#include "SceneItem.h"

#include <QList>

#include <memory>

/// Finds what a person points at.
class ScenePicker
{
public:
    /// All three outlive the picker.
    ScenePicker(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items,
                const SceneGizmos &gizmos);
    ~ScenePicker();

    /// The object at a place in the viewport, the nearest to the eye; 0 where there is none.
    /// @param kinds of gizmos that can be hit
    quint64 at(const OrbitCamera &camera, const QPointF &place, SceneGizmos::Kinds kinds) const;
    /// The objects of which any part is in a rectangle of the viewport, seen or hidden by others, in scene order.
    QList<quint64> in(const OrbitCamera &camera, const QRectF &rect, SceneGizmos::Kinds kinds) const;

    /// Of all meshes.
    const SceneBox &bounds() const { return m_tree.bounds(); }
    /// Of one item's mesh, in the scene's space; empty for an item without one.
    const SceneBox &boundsOf(size_t item) const { return m_boxes[item]; }

private:
    void makeBoxes();
    const MeshShape &shapeOf(size_t item) const;
    float hit(size_t item, const ViewRay &ray, float distance) const;

    const interchange::SceneGeometry &m_geometry;
    const std::vector<SceneItem> &m_items;
    const SceneGizmos &m_gizmos;
    std::vector<MeshShape> m_shapes;
    std::vector<SceneBox> m_boxes; ///< by item
    BoxTree m_tree;
};
