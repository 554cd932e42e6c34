#include <nkKernelServices/nkMaterialEntryId.h>

nkMaterialEntryId::EntryType nkMaterialEntryId::getEntryType() const
{
    switch (m_object.getType()) {
    case nkObjectType::Material:
        return Material;
    case nkObjectType::MaterialGroup:
        return Group;
    default:
        return Invalid;
    }
}
