#pragma once

#include <QMatrix4x4>

#include <vector>

namespace interchange {
struct SceneGeometry;
class SceneSource;
} // namespace interchange

/// An object of the document that can be seen: where it stands, and what of the file's geometry it shows.
struct SceneItem
{
    quint64 id = 0;
    qint32 node = -1; ///< in SceneGeometry::nodes
    QMatrix4x4 world; ///< from the node's space to the scene's

    /// The objects that the document has now and that show something, in scene order. They stand where the document
    /// has them: a node that was put below another one moves with it, as it does when the file is saved and read again.
    static std::vector<SceneItem> all(const interchange::SceneGeometry &geometry,
                                      const interchange::SceneSource &source);
};
