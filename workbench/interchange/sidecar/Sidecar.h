#pragma once

#include <kernel/document/AssetState.h>
#include <kernel/document/Clipboard.h>

#include <QLatin1String>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace interchange {

/// The metadata of a scene whose file is never written: everything of its objects and sets that can be edited.
/// Stands in a file beside the model; docs/formats.md publishes the layout.
struct Sidecar
{
    static constexpr int Version = 1;

    struct Asset
    {
        quint32 set = 0; ///< in sets
        kernel::AssetState state = kernel::AssetState::None;
        QString id;
        int version = 0; ///< that the set's content comes from; 0 where nobody knows
    };

    /// An object of the model, also where there is nothing to say of it: who is not here is new in the model.
    struct Object
    {
        bool isMaterial = false;
        QString key;  ///< unique among nodes, and among materials; not empty
        QString name; ///< in the model
        std::optional<QString> renamed;
        bool isLocked = false;
        /// Its own set, without a name; none where there is nothing in it.
        std::optional<kernel::SetCopy> own;
    };

    /// One set and a run of objects that it is assigned to. Runs come in the order of assigning.
    struct Run
    {
        quint32 set = 0;
        std::vector<quint32> objects; ///< in objects
    };

    std::vector<kernel::SetCopy> sets;
    std::vector<Asset> assets;
    std::vector<Object> objects;
    std::vector<Run> runs;
};

/// The words of the file.
namespace SidecarNames {

constexpr std::string_view FormatName = "metadata-sidecar";
constexpr const char *Format = "format";
constexpr const char *Version = "version";
constexpr const char *Sets = "sets";
constexpr const char *Assets = "assets";
constexpr const char *Objects = "objects";
constexpr const char *Assigned = "assigned";
constexpr const char *Set = "set";
constexpr const char *State = "state";
constexpr const char *Id = "id";
constexpr const char *Node = "node";
constexpr const char *Material = "material";
constexpr const char *Name = "name";
constexpr const char *Renamed = "renamed";
constexpr const char *Locked = "locked";
constexpr const char *Own = "own";
constexpr std::string_view AtRest = "atRest";
constexpr std::string_view Edited = "edited";

} // namespace SidecarNames

} // namespace interchange
