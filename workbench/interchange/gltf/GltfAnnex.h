#pragma once

#include <kernel/document/AssetState.h>
#include <kernel/document/Clipboard.h>
#include <kernel/document/SceneplatePlacement.h>

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

    /// An object by its place.
    struct Reference
    {
        enum Kind : quint8 { Node, Material, Group };
        Kind kind = Node;
        quint32 index = 0; ///< in the file's nodes or materials; of a group, among the groups of `materials`
        QString name;      ///< there; empty where it has none
    };

    /// An image before or behind the scene: a node that the annex says more about.
    struct Sceneplate
    {
        QString image; ///< absolute, or relative to the file's folder
        kernel::SceneplatePlacement placement = kernel::SceneplatePlacement::Behind;
    };

    /// An object that the annex says something about.
    struct Object : Reference
    {
        bool isLocked = false;
        std::optional<Sceneplate> sceneplate;
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

    /// A material, or a group of them with its name, in the order in which people see them: a group stands before
    /// what is in it.
    struct MaterialItem : Reference
    {
        qint32 group = -1; ///< what it stands in, counted among the groups; -1 at the top level
    };

    std::vector<kernel::SetCopy> sets;
    std::vector<Asset> assets;
    std::vector<Object> objects;
    std::vector<Run> runs;
    /// The tree of materials and groups, where it is more than the file's list of materials.
    std::vector<MaterialItem> materials;
    /// The nodes at the top level, where their order is not that of the file's scenes.
    std::vector<Reference> roots;
    /// What stands in the file and is not to be shown: materials, and nodes with everything below them.
    std::vector<Reference> removed;

    bool isEmpty() const
    {
        return sets.empty() && objects.empty() && materials.empty() && roots.empty() && removed.empty();
    }
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
constexpr const char *Group = "group";
constexpr const char *In = "in";
constexpr const char *Materials = "materials";
constexpr const char *Roots = "roots";
constexpr const char *Removed = "removed";
constexpr const char *Sceneplate = "sceneplate";
constexpr const char *Image = "image";
constexpr const char *Placement = "placement";
constexpr const char *Name = "name";
constexpr const char *Locked = "locked";
constexpr const char *Own = "own";
constexpr const char *Apart = "apart";
constexpr const char *Renamed = "renamed";
constexpr std::string_view AtRest = "atRest";
constexpr std::string_view Edited = "edited";
constexpr std::string_view Behind = "behind";
constexpr std::string_view InFront = "inFront";

} // namespace GltfAnnexNames

} // namespace interchange
