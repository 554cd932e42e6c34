#include "HandleKind.h"

#include <nkKernelServices/nkdBaseLightNode.h>
#include <nkKernelServices/nkdCameraBaseNode.h>
#include <nkKernelServices/nkdMaterial.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdNode.h>
#include <nkKernelServices/nkdSceneplateNode.h>

namespace kernel {

namespace {

template <typename Handle>
void useAs(const nkdObject &object, const std::function<void(nkdObject &)> &use)
{
    Handle handle(object);
    use(handle);
}

} // namespace

const QMetaObject &kindOf(nkObjectType type)
{
    switch (type) {
    case nkObjectType::Node:
        return nkdNode::staticMetaObject;
    case nkObjectType::Camera:
        return nkdCameraBaseNode::staticMetaObject;
    case nkObjectType::Light:
        return nkdBaseLightNode::staticMetaObject;
    case nkObjectType::Sceneplate:
        return nkdSceneplateNode::staticMetaObject;
    case nkObjectType::MaterialGroup:
        return nkdMaterialGroupNode::staticMetaObject;
    case nkObjectType::Material:
        return nkdMaterial::staticMetaObject;
    case nkObjectType::MetadataSet:
        return nkdMetadataSet::staticMetaObject;
    case nkObjectType::MetadataEntry:
        return nkdMetadataEntry::staticMetaObject;
    case nkObjectType::Metadata:
        return nkdMetadata::staticMetaObject;
    case nkObjectType::Null:
        break;
    }
    return nkdObject::staticMetaObject;
}

void withHandle(nkObjectType type, quint64 id, const std::function<void(nkdObject &)> &use)
{
    nkdObject object(id, type);
    switch (type) {
    case nkObjectType::Node:
        return useAs<nkdNode>(object, use);
    case nkObjectType::Camera:
        return useAs<nkdCameraBaseNode>(object, use);
    case nkObjectType::Light:
        return useAs<nkdBaseLightNode>(object, use);
    case nkObjectType::Sceneplate:
        return useAs<nkdSceneplateNode>(object, use);
    case nkObjectType::MaterialGroup:
        return useAs<nkdMaterialGroupNode>(object, use);
    case nkObjectType::Material:
        return useAs<nkdMaterial>(object, use);
    case nkObjectType::MetadataSet:
        return useAs<nkdMetadataSet>(object, use);
    case nkObjectType::MetadataEntry:
        return useAs<nkdMetadataEntry>(object, use);
    case nkObjectType::Metadata: {
        nkdMetadata metadata(id);
        return use(metadata);
    }
    case nkObjectType::Null:
        return use(object);
    }
}

} // namespace kernel
