#pragma once

#include <interchange/ImportReport.h>
#include <interchange/geometry/SceneGeometry.h>
#include <interchange/gltf/ExtrasEntry.h>
#include <interchange/gltf/GltfScene.h>

#include <nkKernelServices/nkMetadataTypes.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace interchange {

/// What was read from a file that is never written: IFC, and what the importer process reads. Plain data, in the
/// file's own order; it belongs to no document yet. Indices are positions in the vectors here, -1 for none.
struct ForeignScene
{
    struct Entry
    {
        QString key; ///< unique in its set
        nkMetadataTypes::ValueType type = nkMetadataTypes::String;
        QVariant value; ///< in the type's stored form; invalid for a tag
        bool isTag = false;
    };

    struct Node
    {
        QString name; ///< as people see it; never empty
        /// What tells the object from all others in this file and stays when the file is written anew by its own
        /// program: what the sidecar knows it by. Unique among nodes, never empty.
        QString key;
        qint32 parent = -1; ///< comes before its children
        SceneNodeKind kind = SceneNodeKind::Node;
        IndexRange entries; ///< of its own set, in entries
    };

    struct Material
    {
        QString name;
        QString key; ///< likewise, unique among materials
        IndexRange entries;
    };

    /// A shared set and the nodes that it is assigned to.
    struct Set
    {
        QString name; ///< need not be unique
        IndexRange entries;
        std::vector<quint32> nodes; ///< ascending, each once
    };

    std::vector<Node> nodes;
    std::vector<Material> materials;
    std::vector<Set> sets;
    std::vector<Entry> entries; ///< of all of them
    /// What can be drawn; its nodes and materials have the same indices as those here. Null where there is nothing.
    std::shared_ptr<const SceneGeometry> geometry;
    ImportReport report;
};

} // namespace interchange
