#pragma once

#include "nkMaterialEntry.h"
#include "nkdMaterialGroupNode.h"

#include <QMetaType>

/// A selection item of the material editor: a material or a material group.
class NK_KERNEL_SERVICES_EXPORT nkMaterialEntryId
{
public:
    enum EntryType : int { Invalid = 0, Material = 1, Group = 2 };

    nkMaterialEntryId() = default;
    nkMaterialEntryId(const nkdMaterial &material) : m_object(material) {}
    nkMaterialEntryId(const nkdMaterialGroupNode &group) : m_object(group) {}

    /// Invalid for a null item.
    EntryType getEntryType() const;
    nkMaterialEntry getEntry() const { return nkMaterialEntry(m_object); }
    /// The material or the group node as a plain handle.
    nkdObject getObject() const { return m_object; }

    bool operator==(const nkMaterialEntryId &other) const { return m_object == other.m_object; }
    bool operator!=(const nkMaterialEntryId &other) const { return m_object != other.m_object; }

private:
    nkdObject m_object;
};

Q_DECLARE_METATYPE(nkMaterialEntryId)
