#pragma once

#include "nkdNode.h"

/// A group of the material editor. It stands outside the scene graph: its parent and children are material
/// groups.
class NK_KERNEL_SERVICES_EXPORT nkdMaterialGroupNode : public nkdNode
{
    Q_OBJECT
public:
    nkdMaterialGroupNode() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdMaterialGroupNode::staticMetaObject).
    explicit nkdMaterialGroupNode(const nkdObject &other) : nkdNode(other, staticMetaObject) {}
    nkdMaterialGroupNode(const nkdMaterialGroupNode &other) = default;
    nkdMaterialGroupNode &operator=(const nkdMaterialGroupNode &other) = default;
    ~nkdMaterialGroupNode() override;
};

Q_DECLARE_METATYPE(nkdMaterialGroupNode)
