#pragma once

#include <interchange/ImportReport.h>
#include <interchange/gltf/ExtrasEntry.h>
#include <interchange/json/JsonSpan.h>

#include <QString>

#include <vector>

namespace interchange {

/// What a node is in the scene: one with a `camera` is a camera, else one with a punctual light a light.
enum class SceneNodeKind : quint8 { Node, Camera, Light };

/// A node of a scene file. Indices are positions in the vectors of GltfScene, -1 for none.
struct SceneNode
{
    QString name; ///< as in the file; "Node 12", "Camera 12", "Light 12" by its index where there is none
    qint32 parent = -1;
    IndexRange children; ///< in GltfScene::children
    qint32 camera = -1;
    qint32 light = -1;
    qint32 mesh = -1; ///< index in the file's `meshes`
    SceneNodeKind kind = SceneNodeKind::Node;
    bool isNamed = false; ///< the name is the node's own in the file
    IndexRange entries;   ///< in GltfScene::entries
    JsonSpan span;        ///< the whole node object
    JsonSpan extrasSpan;  ///< the value of `extras`, whatever it is; empty when there is none
};

/// A material of a scene file.
struct SceneMaterial
{
    QString name;         ///< as in the file; "Material 3" by its index where there is none
    bool isNamed = false; ///< the name is the material's own in the file
    IndexRange entries;
    JsonSpan span;
    JsonSpan extrasSpan;
};

/// One of the file's `cameras`; nodes refer to it.
struct SceneCamera
{
    enum class Type : quint8 { Other, Perspective, Orthographic };
    QString name; ///< empty where there is none
    Type type = Type::Other;
};

/// One of the file's punctual lights; nodes refer to it.
struct SceneLight
{
    enum class Type : quint8 { Other, Directional, Point, Spot };
    QString name; ///< empty where there is none
    Type type = Type::Other;
};

/// One of the file's `scenes`.
struct SceneListing
{
    QString name; ///< empty where there is none
    std::vector<qint32> nodes;
};

/// What was read from a glTF 2.0 file, in the file's own indices. Plain data: it belongs to no document yet.
struct GltfScene
{
    std::vector<SceneNode> nodes;
    std::vector<qint32> children; ///< child lists of all nodes, one behind the other
    /// Nodes without a parent: those of the default scene first, then of the other scenes, then those of no scene.
    std::vector<qint32> roots;
    std::vector<SceneMaterial> materials;
    std::vector<SceneCamera> cameras;
    std::vector<SceneLight> lights;
    std::vector<SceneListing> scenes;
    qint32 defaultScene = -1;
    std::vector<ExtrasEntry> entries; ///< of all nodes and materials

    QString generator;       ///< `asset.generator`; empty where there is none
    JsonSpan rootSpan;       ///< the outermost object
    JsonSpan rootExtrasSpan; ///< its `extras`; empty when there are none
    ImportReport report;
};

} // namespace interchange
