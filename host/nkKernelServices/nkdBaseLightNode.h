#pragma once

#include "nkdNode.h"

/// A light of the scene graph.
class NK_KERNEL_SERVICES_EXPORT nkdBaseLightNode : public nkdNode
{
    Q_OBJECT
public:
    nkdBaseLightNode() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdBaseLightNode::staticMetaObject).
    explicit nkdBaseLightNode(const nkdObject &other) : nkdNode(other, staticMetaObject) {}
    nkdBaseLightNode(const nkdBaseLightNode &other) = default;
    nkdBaseLightNode &operator=(const nkdBaseLightNode &other) = default;
    ~nkdBaseLightNode() override;
};

Q_DECLARE_METATYPE(nkdBaseLightNode)
