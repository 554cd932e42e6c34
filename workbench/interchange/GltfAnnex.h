#pragma once

#include <kernel/document/AssetState.h>
#include <kernel/document/Clipboard.h>

#include <QHash>
#include <QLatin1String>
#include <QSet>

#include <optional>
#include <string_view>
#include <vector>

namespace interchange {

/// What the extras of nodes and materials cannot say: shared sets and their assignments, and of objects what is
/// more than plain values. Stands under one member of the extras of a glTF file's root; docs/formats.md publishes
/// the layout.
struct GltfAnnex
{
    static constexpr QLatin1String Member{"metadataEditor"};
    static constexpr int Version = 1;

    struct Asset
    {
        quint32 set = 0; ///< in sets
        kernel::AssetState state = kernel::AssetState::None;
        QString id;
        int version = 0; ///< that the set's content comes from; 0 where nobody knows
    };

    /// A node or material that the annex says something about.
    struct Object
    {
        bool isMaterial = false;
        quint32 index = 0; ///< in the file's nodes or materials
        QString name;      ///< there; empty where it has none
        bool isLocked = false;
        /// Its own set as it really is, where extras cannot say it all.
        std::optional<kernel::SetCopy> own;
        QSet<QString> apart; ///< keys of entries of its own set that stand in no extras
        QHash<QString, QString>
            renamed; ///< from an entry's key to the one that its place in the extras gives
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

    bool isEmpty() const { return sets.empty() && objects.empty(); }
};

/// The words of the annex beside its name.
namespace GltfAnnexNames {

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
constexpr const char *Locked = "locked";
constexpr const char *Own = "own";
constexpr const char *Apart = "apart";
constexpr const char *Renamed = "renamed";
constexpr std::string_view AtRest = "atRest";
constexpr std::string_view Edited = "edited";

} // namespace GltfAnnexNames

} // namespace interchange
