#pragma once

#include "nkdNode.h"

/// A sceneplate: an image placed in front of or behind the scene.
class NK_KERNEL_SERVICES_EXPORT nkdSceneplateNode : public nkdNode
{
    Q_OBJECT
public:
    nkdSceneplateNode() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdSceneplateNode::staticMetaObject).
    explicit nkdSceneplateNode(const nkdObject &other) : nkdNode(other, staticMetaObject) {}
    nkdSceneplateNode(const nkdSceneplateNode &other) = default;
    nkdSceneplateNode &operator=(const nkdSceneplateNode &other) = default;
    ~nkdSceneplateNode() override;
};

Q_DECLARE_METATYPE(nkdSceneplateNode)
