#pragma once

#include "nkKernelServicesExport.h"
#include "nkdMaterial.h"
#include "nkdNode.h"

/// What one item of the material editor shows: a material or a material group.
class NK_KERNEL_SERVICES_EXPORT nkMaterialEntry
{
public:
    nkMaterialEntry() = default;
    explicit nkMaterialEntry(const nkdObject &object) : m_object(object) {}

    /// Null where the item is no material.
    nkdMaterial getMaterial() const { return nkdMaterial(m_object); }
    /// The group's node; null where the item is no group.
    nkdNode getGroupNode() const { return nkdNode(m_object); }

private:
    nkdObject m_object;
};
