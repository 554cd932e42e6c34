#pragma once

#include "nkdNode.h"

/// A camera of the scene graph.
class NK_KERNEL_SERVICES_EXPORT nkdCameraBaseNode : public nkdNode
{
    Q_OBJECT
public:
    nkdCameraBaseNode() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdCameraBaseNode::staticMetaObject).
    explicit nkdCameraBaseNode(const nkdObject &other) : nkdNode(other, staticMetaObject) {}
    nkdCameraBaseNode(const nkdCameraBaseNode &other) = default;
    nkdCameraBaseNode &operator=(const nkdCameraBaseNode &other) = default;
    ~nkdCameraBaseNode() override;
};

Q_DECLARE_METATYPE(nkdCameraBaseNode)
