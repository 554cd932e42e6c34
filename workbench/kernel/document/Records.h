#pragma once

#include "AssetState.h"
#include "ChildList.h"
#include "EntryValue.h"
#include "IndexTable.h"
#include "KeyPool.h"
#include "SceneplatePlacement.h"
#include "SlotList.h"
#include "UniqueNames.h"

#include <nkKernelServices/nkObjectType.h>

#include <QColor>
#include <QString>

#include <array>
#include <memory>

namespace kernel {

/// The number of an assignment in the store's table of links.
using LinkIndex = quint32;
constexpr LinkIndex NoLink = 0xffffffffu;

/// Both ends of a chain of assignments.
struct LinkEnds
{
    LinkIndex first = NoLink;
    LinkIndex last = NoLink;
    quint32 count = 0;
};

/// One set assigned to one object: a member of the set's chain and of the object's, each in order of
/// assignment. A link that is taken out keeps its neighbours, so that putting it back (changes are undone in
/// the opposite order) finds its old place.
struct AssignmentLink
{
    Slot set = NoSlot;
    Slot object = NoSlot;
    LinkIndex previousInSet = NoLink;
    LinkIndex nextInSet = NoLink;
    LinkIndex previousInObject = NoLink;
    LinkIndex nextInObject = NoLink;
};

/// Where a scene object stands: below which other (NoSlot: at the top level), and where among its siblings.
struct ObjectPlace
{
    Slot parent = NoSlot;
    Rank rank = 0;
};

/// What a sceneplate has beside what all scene objects have.
struct SceneplateRecord
{
    QString imagePath;
    SceneplatePlacement placement = SceneplatePlacement::Behind;

    bool operator==(const SceneplateRecord &other) const
    {
        return imagePath == other.imagePath && placement == other.placement;
    }
};

/// A scene object.
struct ObjectRecord
{
    QString name;
    ChildList children;
    ObjectPlace place;
    Slot objectSet = NoSlot;
    LinkEnds links;
    nkObjectType type = nkObjectType::Null;
    bool locked = false;
};

/// What a set with many entries has beside them: the way from key to entry, and from a base to free keys.
struct KeyIndex
{
    IndexTable entries;
    UniqueNames names;
};

/// The asset manager's side of a set.
struct AssetLink
{
    AssetState state = AssetState::None;
    QString assetId;
    /// The version of the asset that the set's content comes from; 0 where nobody knows.
    int version = 0;

    bool operator==(const AssetLink &other) const
    {
        return state == other.state && assetId == other.assetId && version == other.version;
    }
};

/// The six kinds of scene object, for counters by kind.
constexpr int SceneKindCount = 6;
constexpr int sceneKindIndex(nkObjectType type)
{
    return int(type) - int(nkObjectType::Node);
}

/// A metadata set, shared or an object's own.
struct SetRecord
{
    /// Empty for an object's own set, which is called like its object.
    QString name;
    SlotList entries;
    bool locked = false;
    AssetLink asset;
    /// The object whose own set it is; NoSlot for a shared set.
    Slot owner = NoSlot;
    // Up to here in one line of the processor's cache: what commands ask of every selected set.
    LinkEnds links;
    /// How many objects of each kind it is assigned to, by sceneKindIndex.
    std::array<quint32, SceneKindCount> linkedKinds{};
    QColor color;
    /// Null while the set is small enough to be searched.
    std::unique_ptr<KeyIndex> index;

    bool isEditable() const { return !locked && asset.state != AssetState::AtRest; }
};

/// An entry. Twenty-four bytes: there are millions.
struct EntryRecord
{
    EntryValue value;
    /// In the store's key pool.
    quint32 key = KeyPool::None;
    Slot set = NoSlot;
};

} // namespace kernel
