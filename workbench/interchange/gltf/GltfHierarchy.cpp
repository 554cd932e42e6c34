#include <interchange/gltf/GltfHierarchy.h>

#include <interchange/json/JsonPath.h>

#include <algorithm>

namespace interchange {

bool GltfHierarchy::resolve()
{
    if (!linkParents() || !checkDepth())
        return false;
    collectRoots();
    return true;
}

bool GltfHierarchy::linkParents()
{
    const auto count = static_cast<qint32>(m_scene.nodes.size());
    for (qint32 parent = 0; parent < count; ++parent) {
        const IndexRange range = m_scene.nodes[size_t(parent)].children;
        for (quint32 i = 0; i < range.count; ++i) {
            const qint32 index = m_scene.children[range.first + i];
            qint32 &known = m_scene.nodes[size_t(index)].parent;
            if (known == parent)
                return fail(parent, i, tr("nodes[%1] is named twice as a child of the same node").arg(index));
            if (known >= 0)
                return fail(parent, i,
                            tr("nodes[%1] is already a child of nodes[%2]; a node has one parent only")
                                .arg(index)
                                .arg(known));
            known = parent;
        }
    }
    return true;
}

/// Goes down from the roots level by level. What no root leads to stands in a circle or below one.
bool GltfHierarchy::checkDepth()
{
    std::vector<bool> reached(m_scene.nodes.size(), false);
    std::vector<qint32> level;
    std::vector<qint32> below;
    for (size_t i = 0; i < m_scene.nodes.size(); ++i) {
        if (m_scene.nodes[i].parent < 0)
            level.push_back(static_cast<qint32>(i));
    }
    for (int depth = 1; !level.empty(); ++depth) {
        below.clear();
        for (const qint32 node : level) {
            reached[size_t(node)] = true;
            const IndexRange range = m_scene.nodes[size_t(node)].children;
            if (range.count > 0 && depth >= m_maximalDepth)
                return fail(node, 0,
                            tr("the nodes stand more than %1 levels below each other").arg(m_maximalDepth));
            for (quint32 i = range.first; i < range.end(); ++i)
                below.push_back(m_scene.children[i]);
        }
        level.swap(below);
    }
    const bool all = std::find(reached.begin(), reached.end(), false) == reached.end();
    return all || failAtCircle(reached);
}

/// Follows the parents of a node that no root leads to until one comes a second time: that one is in the circle.
bool GltfHierarchy::failAtCircle(const std::vector<bool> &reached)
{
    const auto lost = std::find(reached.begin(), reached.end(), false) - reached.begin();
    std::vector<bool> seen(m_scene.nodes.size(), false);
    auto node = static_cast<qint32>(lost);
    while (!seen[size_t(node)]) {
        seen[size_t(node)] = true;
        node = m_scene.nodes[size_t(node)].parent;
    }
    const qint32 parent = m_scene.nodes[size_t(node)].parent;
    const IndexRange range = m_scene.nodes[size_t(parent)].children;
    quint32 position = 0;
    while (m_scene.children[range.first + position] != node)
        ++position;
    return fail(parent, position,
                tr("nodes[%1] is a child of itself, directly or through other nodes").arg(node));
}

void GltfHierarchy::collectRoots()
{
    m_listed.assign(m_scene.nodes.size(), false);
    if (m_scene.defaultScene >= 0)
        collectRootsOf(m_scene.defaultScene);
    for (size_t i = 0; i < m_scene.scenes.size(); ++i) {
        if (static_cast<qint32>(i) != m_scene.defaultScene)
            collectRootsOf(static_cast<qint32>(i));
    }
    for (size_t i = 0; i < m_scene.nodes.size(); ++i) {
        if (m_scene.nodes[i].parent < 0 && !m_listed[i])
            m_scene.roots.push_back(static_cast<qint32>(i));
    }
}

void GltfHierarchy::collectRootsOf(qint32 scene)
{
    const SceneListing &listing = m_scene.scenes[size_t(scene)];
    for (size_t i = 0; i < listing.nodes.size(); ++i) {
        const qint32 node = listing.nodes[i];
        if (m_scene.nodes[size_t(node)].parent >= 0)
            noteRootWithParent(static_cast<quint32>(scene), static_cast<quint32>(i));
        else if (!m_listed[size_t(node)])
            m_scene.roots.push_back(node);
        m_listed[size_t(node)] = true;
    }
}

void GltfHierarchy::noteRootWithParent(quint32 scene, quint32 position)
{
    JsonPath path;
    path.append(QStringLiteral("scenes")).append(scene).append(QStringLiteral("nodes")).append(position);
    m_scene.report.addNote(path.text(), ImportReason::RootHasParent);
}

bool GltfHierarchy::fail(qint32 node, quint32 position, const QString &reason)
{
    m_fault = {node, position, reason};
    return false;
}

} // namespace interchange
