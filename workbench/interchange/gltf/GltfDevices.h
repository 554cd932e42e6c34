#pragma once

#include <interchange/SceneSource.h>
#include <interchange/json/JsonEdit.h>

#include <vector>

namespace interchange {

/// The cameras and lights of a glTF text, which stand in lists of their own: those for new nodes are added, those that
/// a save has added and that no node has any more are taken out.
class GltfDevices
{
public:
    /// All outlive it.
    GltfDevices(const JsonTree &tree, const SceneSource &source, JsonEdit &edit);

    /// Takes out what no node needs. To be called first. @param nodes those that stay
    void cut(const std::vector<JsonValue> &nodes);
    /// The members by which a new node is a camera or a light.
    JsonEdit::Member addCamera();
    JsonEdit::Member addLight();
    /// Makes the changes. To be called once, at the end.
    void finish();

    quint32 madeCameras() const { return m_cameras.made; }
    quint32 madeLights() const { return m_lights.made; }

private:
    /// One of the lists; absent where the text has none.
    struct List
    {
        JsonValue value;
        std::vector<JsonValue> elements;
        quint32 made = 0; ///< how many at its end are ours, new ones among them
        QByteArrayList added;

        quint32 next() const { return quint32(elements.size()) + quint32(added.size()); }
    };

    static List listOf(const JsonValue &value, quint32 made);
    void cutFrom(List &list, quint32 used);
    void addLights();
    void nameExtension();
    void forgetExtension();

    const JsonValue m_root;
    const JsonValue m_extensions;
    const JsonValue m_punctual;
    JsonEdit &m_edit;
    const bool m_isSpaced;
    List m_cameras;
    List m_lights;
};

} // namespace interchange
