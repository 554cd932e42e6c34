#pragma once

#include <interchange/SceneError.h>
#include <interchange/gltf/ExtrasReader.h>
#include <interchange/gltf/GltfCheck.h>
#include <interchange/gltf/GltfScene.h>
#include <interchange/json/JsonReader.h>

#include <QCoreApplication>

#include <functional>

namespace interchange {

/// What a scene may be at most.
struct GltfLimits
{
    JsonLimits json;
    /// Levels of nodes below each other. Skeletons and assemblies reach some dozens; the trees that show the scene
    /// paint and search level by level inside each other, so far deeper scenes would only bring them down.
    int sceneDepth = 1000;
};

/// Reads the JSON text of a glTF 2.0 file: scene graph, materials, cameras, punctual lights, and the extras of nodes
/// and materials.
///
/// Whatever decides how the scene is built is checked: a value of the wrong type, an index that points nowhere, a
/// node with two parents and a circle are errors, and nothing is read then. What only other programs understand
/// (geometry, images, unknown extensions, required ones too) is not looked at, and nothing the file refers to is
/// ever opened.
class GltfReader
{
    Q_DECLARE_TR_FUNCTIONS(GltfReader)

public:
    explicit GltfReader(const GltfLimits &limits = GltfLimits());

    /// Reads `json` into `scene`, whose spans count in `json`. False when something is wrong: error() says what
    /// and where, and `scene` is as it was.
    bool read(const QByteArray &json, GltfScene &scene);
    /// The same, and keeps the values of the text.
    bool read(const QByteArray &json, GltfScene &scene, JsonTree &tree);

    /// Asked again and again while a long text is read, with the share that has been read; false ends the
    /// reading with isCancelled().
    void setGoOn(const JsonGoOn &goOn) { m_goOn = goOn; }
    /// Asked of every node and material whether its extras can be passed over, as the caller knows what is in them;
    /// it has no entries then.
    using IsKnown = std::function<bool(const JsonValue &object, bool isMaterial, quint32 index)>;
    void setIsKnown(const IsKnown &isKnown) { m_isKnown = isKnown; }
    bool isCancelled() const { return m_isCancelled; }

    const SceneError &error() const { return m_error; }

private:
    struct Root;

    bool readRoot(const JsonValue &value);
    bool readAsset(const JsonValue &root, const JsonValue &asset);
    bool readCameras(const JsonValue &cameras);
    bool readLights(const JsonValue &extensions);
    bool readNodes(const JsonValue &nodes, quint32 meshCount);
    bool readNode(const JsonValue &value, quint32 index, quint32 meshCount);
    bool readChildren(const JsonValue &children, SceneNode &node);
    bool readLightOf(const JsonValue &extensions, SceneNode &node);
    bool readMaterials(const JsonValue &materials);
    bool readScenes(const JsonValue &scenes, const JsonValue &defaultScene);
    bool readScene(const JsonValue &scene);
    bool resolveHierarchy(const JsonValue &nodes);
    void nameNode(const QString &name, quint32 index);

    GltfLimits m_limits;
    GltfScene m_scene;
    GltfCheck m_check;
    SceneError m_error;
    JsonGoOn m_goOn;
    IsKnown m_isKnown;
    bool m_isCancelled = false;
    ExtrasReader *m_extras = nullptr; ///< lives during one read()
};

} // namespace interchange
