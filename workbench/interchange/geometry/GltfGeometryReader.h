#pragma once

#include <interchange/geometry/GltfTroubles.h>
#include <interchange/geometry/SceneGeometry.h>
#include <interchange/json/JsonValue.h>

#include <QCoreApplication>

#include <functional>
#include <memory>

namespace interchange {

class SceneSource;

/// Reads what of a glTF scene can be drawn: meshes, base colours, cameras and lights, under the file's own indices.
///
/// Nothing is ever refused: what is damaged, missing or not known is left out, and a sentence among the troubles says
/// so. Works on any thread, over a source that does not change meanwhile.
class GltfGeometryReader
{
    Q_DECLARE_TR_FUNCTIONS(GltfGeometryReader)

public:
    /// @param source outlives the reader
    explicit GltfGeometryReader(const SceneSource &source);

    /// Asked between two meshes; false ends the reading, and what was read so far is the result.
    void setGoOn(const std::function<bool()> &goOn) { m_goOn = goOn; }
    SceneGeometry read();

private:
    void readMaterials(const JsonValue &root);
    void readMeshes(const JsonValue &root);
    void readCameras(const JsonValue &root);
    void readLights(const JsonValue &root);
    void readNodes(const JsonValue &root);
    void readNode(const JsonValue &value, SceneGeometry::Node &node) const;
    void linkChildren(const std::vector<JsonValue> &nodes);
    void cutRings();

    const SceneSource &m_source;
    std::function<bool()> m_goOn;
    SceneGeometry m_scene;
    GltfTroubles m_troubles;
};

} // namespace interchange
