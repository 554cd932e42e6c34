#pragma once

#include <QtGlobal>

/// The type ids of host objects, as nkdObject::getTypeId answers them.
enum class nkObjectType : quint64 {
    Null = 0,
    Node = 1,
    Camera = 2,
    Light = 3,
    Sceneplate = 4,
    MaterialGroup = 5,
    Material = 6,
    MetadataSet = 7,
    MetadataEntry = 8,
    Metadata = 9
};
