#pragma once

#include "nkdSceneObject.h"

/// A material.
class NK_KERNEL_SERVICES_EXPORT nkdMaterial : public nkdSceneObject
{
    Q_OBJECT
public:
    nkdMaterial() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdMaterial::staticMetaObject).
    explicit nkdMaterial(const nkdObject &other) : nkdSceneObject(other, staticMetaObject) {}
    nkdMaterial(const nkdMaterial &other) = default;
    nkdMaterial &operator=(const nkdMaterial &other) = default;
    ~nkdMaterial() override;
};

Q_DECLARE_METATYPE(nkdMaterial)
