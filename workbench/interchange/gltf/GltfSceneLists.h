#pragma once

#include <interchange/gltf/GltfStructurePlan.h>
#include <interchange/json/JsonEdit.h>

#include <functional>

namespace interchange {

/// Brings the `scenes` of a glTF text to the top level of the document. What is new there comes into the default
/// scene; what was in another one stays there; what no scene named still stands in none. A text without any scene gets
/// one, as deleted nodes could not be told from others without.
class GltfSceneLists
{
public:
    using NumberOf = std::function<quint32(quint64 id)>;

    /// All outlive it. @param numberOf where the node with this id stands in `nodes`
    GltfSceneLists(const JsonTree &tree, const SceneSource &source, const GltfStructurePlan &plan,
                   JsonEdit &edit, const NumberOf &numberOf);

    void patch();

private:
    void findListed(const JsonValue &scenes);
    void patchScene(const JsonValue &scene, bool isTarget);
    void addScene(const JsonValue &scenes);
    bool isFresh(quint64 id, quint32 node) const;

    const JsonValue m_root;
    const SceneSource &m_source;
    const GltfStructurePlan &m_plan;
    JsonEdit &m_edit;
    const NumberOf m_numberOf;
    QHash<quint32, quint64> m_ids; ///< of nodes of the text
    QSet<quint32> m_listed;
    QSet<quint64> m_oldRoots;
};

} // namespace interchange
