#pragma once

#include <interchange/gltf/GltfScene.h>

#include <QCoreApplication>

namespace interchange {

/// Puts the nodes of a scene below each other and makes sure that they form trees: no node with two parents, no
/// circle, not too deep. Works level by level, never by recursion.
class GltfHierarchy
{
    Q_DECLARE_TR_FUNCTIONS(GltfHierarchy)

public:
    /// What is wrong, at which entry of which node's child list.
    struct Fault
    {
        qint32 node = -1;
        quint32 position = 0;
        QString reason;
    };

    /// `maximalDepth` counts levels: 1 allows roots only.
    GltfHierarchy(GltfScene &scene, int maximalDepth) : m_scene(scene), m_maximalDepth(maximalDepth) {}

    /// Fills the parents of all nodes and the list of roots from the child lists and the scenes, whose indices must
    /// be in range. False when there is a fault; the scene is of no use then.
    bool resolve();

    const Fault &fault() const { return m_fault; }

private:
    bool linkParents();
    bool checkDepth();
    void collectRoots();
    void collectRootsOf(qint32 scene);
    void noteRootWithParent(quint32 scene, quint32 position);
    bool failAtCircle(const std::vector<bool> &reached);
    bool fail(qint32 node, quint32 position, const QString &reason);

    GltfScene &m_scene;
    int m_maximalDepth;
    std::vector<bool> m_listed;
    Fault m_fault;
};

} // namespace interchange
