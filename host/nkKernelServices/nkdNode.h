#pragma once

#include "nkdSceneObject.h"

#include <QList>

/// A node of the scene graph. Camera, light, sceneplate and material-group nodes are nodes too.
class NK_KERNEL_SERVICES_EXPORT nkdNode : public nkdSceneObject
{
    Q_OBJECT
public:
    nkdNode() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdNode::staticMetaObject).
    explicit nkdNode(const nkdObject &other) : nkdSceneObject(other, staticMetaObject) {}
    nkdNode(const nkdNode &other) = default;
    nkdNode &operator=(const nkdNode &other) = default;
    ~nkdNode() override;

    /// The parent node; null for a top-level node.
    Q_INVOKABLE nkdNode getParent() const;
    /// The children, in the scene's order.
    QList<nkdNode> getChildren() const;
    /// The names from the top-level node down to this one, joined with "/". Names are not unique, so
    /// neither is the path.
    Q_INVOKABLE QString getPath() const;
    /// The path with "[n]" behind every name that an earlier sibling has too (n counts from 2): unique.
    Q_INVOKABLE QString getUniquePath() const;

protected:
    nkdNode(const nkdObject &other, const QMetaObject &kind) : nkdSceneObject(other, kind) {}
};

Q_DECLARE_METATYPE(nkdNode)
