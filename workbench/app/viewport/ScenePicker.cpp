#include "ScenePicker.h"

#include <algorithm>
#include <limits>

using interchange::SceneGeometry;

ScenePicker::ScenePicker(const SceneGeometry &geometry, const std::vector<SceneItem> &items,
                         const SceneGizmos &gizmos)
    : m_geometry(geometry), m_items(items), m_gizmos(gizmos)
{
    m_shapes.reserve(geometry.meshes.size());
    for (const SceneGeometry::Mesh &mesh : geometry.meshes) {
        m_shapes.emplace_back(mesh);
    }
    makeBoxes();
    m_tree = BoxTree(m_boxes);
}

ScenePicker::~ScenePicker() = default;

void ScenePicker::makeBoxes()
{
    m_boxes.reserve(m_items.size());
    for (const SceneItem &item : m_items) {
        const qint32 mesh = m_geometry.nodes[size_t(item.node)].mesh;
        m_boxes.push_back(mesh >= 0 ? m_shapes[size_t(mesh)].bounds().mapped(item.world) : SceneBox());
    }
}

const MeshShape &ScenePicker::shapeOf(size_t item) const
{
    return m_shapes[size_t(m_geometry.nodes[size_t(m_items[item].node)].mesh)];
}

/// The ray is moved into the item's space without a change of its length, so that ways along it stay comparable.
float ScenePicker::hit(size_t item, const ViewRay &ray, float distance) const
{
    bool isInvertible = false;
    const QMatrix4x4 toItem = m_items[item].world.inverted(&isInvertible);
    return isInvertible
               ? shapeOf(item).hit({toItem.map(ray.origin), toItem.mapVector(ray.direction)}, distance)
               : distance;
}

quint64 ScenePicker::at(const OrbitCamera &camera, const QPointF &place, SceneGizmos::Kinds kinds) const
{
    const ViewRay ray = camera.ray(place);
    float distance = std::numeric_limits<float>::infinity();
    const auto test = [this, &ray, &distance](quint32 item) { return hit(item, ray, distance); };
    const qint64 item = m_tree.firstHit(ray, test, distance);
    const QMatrix4x4 viewProjection = camera.viewProjection();
    float gizmoDepth = 0;
    const SceneGizmos::Gizmo *gizmo = m_gizmos.at(viewProjection, camera.size(), place, kinds, gizmoDepth);
    const float depth = item >= 0 ? viewProjection.map(ray.origin + ray.direction * distance).z() : 1;
    if (gizmo && gizmoDepth <= depth) {
        return m_items[gizmo->item].id;
    }
    return item >= 0 ? m_items[size_t(item)].id : 0;
}

QList<quint64> ScenePicker::in(const OrbitCamera &camera, const QRectF &rect, SceneGizmos::Kinds kinds) const
{
    const ViewVolume volume(camera.viewProjection(), camera.part(rect));
    std::vector<quint32> found;
    m_tree.find(volume, [this, &volume, &found](quint32 item, ViewVolume::Overlap overlap) {
        if (overlap == ViewVolume::Overlap::All
            || shapeOf(item).touches(volume.mapped(m_items[item].world))) {
            found.push_back(item);
        }
    });
    for (const SceneGizmos::Gizmo &gizmo : m_gizmos.all()) {
        if (kinds.testFlag(gizmo.kind) && m_gizmos.touches(gizmo, volume)) {
            found.push_back(gizmo.item);
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    QList<quint64> ids;
    for (const quint32 item : found) {
        ids.append(m_items[item].id);
    }
    return ids;
}
