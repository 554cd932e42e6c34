#pragma once

#include <QMetaType>

/// What a tree of metadata lists.
enum class TreeMode : int {
    /// All shared sets of the scene, each with its assigned objects as children.
    Sets = 0,
    /// Scene-graph nodes that carry sets or entries of their own, each with its sets as children; the kinds
    /// below likewise.
    Scenegraph = 1,
    Materials = 2,
    Cameras = 3,
    Lights = 4,
    Sceneplates = 5,
    AllObjects = 6,
    /// The objects of the host's last selection, whether they carry metadata or not.
    LastSelection = 7
};

Q_DECLARE_METATYPE(TreeMode)
