#include "MetaTypes.h"

#include <nkKernelServices/nkMaterialEntryId.h>
#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkdBaseLightNode.h>
#include <nkKernelServices/nkdCameraBaseNode.h>
#include <nkKernelServices/nkdMaterial.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdNode.h>
#include <nkKernelServices/nkdSceneObject.h>
#include <nkKernelServices/nkdSceneplateNode.h>

namespace kernel {

void registerMetaTypes()
{
    qRegisterMetaType<nkdObject>();
    qRegisterMetaType<nkdSceneObject>();
    qRegisterMetaType<nkdNode>();
    qRegisterMetaType<nkdMaterial>();
    qRegisterMetaType<nkdMetadata>();
    qRegisterMetaType<nkdMetadataSet>();
    qRegisterMetaType<nkdMetadataEntry>();
    qRegisterMetaType<nkMaterialEntryId>();
    qRegisterMetaType<nkMetadataTypes::ValueType>();
    qRegisterMetaType<nkMetadataTypes::ChangeFlag>();
    qRegisterMetaType<QList<nkdObject>>();
    qRegisterMetaType<QList<nkdNode>>();
    qRegisterMetaType<QList<nkdMetadataSet>>();
    qRegisterMetaType<QList<nkMaterialEntryId>>();
}

} // namespace kernel
