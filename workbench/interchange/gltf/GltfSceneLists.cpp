#include <interchange/gltf/GltfSceneLists.h>

namespace interchange {

namespace {

const QLatin1String ScenesKey("scenes");
const QLatin1String SceneKey("scene");
const QLatin1String NodesKey("nodes");

} // namespace

GltfSceneLists::GltfSceneLists(const JsonTree &tree, const SceneSource &source, const GltfStructurePlan &plan,
                               JsonEdit &edit, const NumberOf &numberOf)
    : m_root(tree.root()),
      m_source(source),
      m_plan(plan),
      m_edit(edit),
      m_numberOf(numberOf),
      m_oldRoots(source.rootIds.begin(), source.rootIds.end())
{}

void GltfSceneLists::patch()
{
    if (!m_plan.hasOtherRoots())
        return;
    const JsonValue scenes = m_root.find(ScenesKey);
    if (!scenes.hasChildren())
        return addScene(scenes);
    for (const SceneSource::ObjectOrigin &origin : m_source.objects()) {
        if (origin.list == SceneSource::List::Nodes)
            m_ids.insert(origin.index, origin.id);
    }
    findListed(scenes);
    const JsonValue preset = m_root.find(SceneKey);
    quint32 target = preset.isPresent() ? JsonEdit::wholeOf(preset) : 0;
    for (const JsonValue scene : scenes.children())
        patchScene(scene, target-- == 0);
}

void GltfSceneLists::findListed(const JsonValue &scenes)
{
    for (const JsonValue scene : scenes.children()) {
        for (const JsonValue node : scene.find(NodesKey).children())
            m_listed.insert(JsonEdit::wholeOf(node));
    }
}

/// Came to the top level since the text was made.
bool GltfSceneLists::isFresh(quint64 id, quint32 node) const
{
    return !m_oldRoots.contains(id) && !m_listed.contains(node);
}

void GltfSceneLists::patchScene(const JsonValue &scene, bool isTarget)
{
    QSet<quint32> present;
    for (const JsonValue node : scene.find(NodesKey).children())
        present.insert(JsonEdit::wholeOf(node));
    std::vector<quint32> wanted;
    QSet<quint64> roots;
    for (const quint64 id : m_plan.roots()) {
        const quint32 node = m_numberOf(id);
        roots.insert(id);
        if (present.contains(node) || (isTarget && isFresh(id, node)))
            wanted.push_back(node);
    }
    // Some files name nodes as roots that have a parent: that is theirs.
    for (const JsonValue node : scene.find(NodesKey).children()) {
        const quint64 id = m_ids.value(JsonEdit::wholeOf(node));
        const bool isOdd = m_plan.isAlive(id) && !roots.contains(id) && !m_oldRoots.contains(id);
        if (isOdd)
            wanted.push_back(JsonEdit::wholeOf(node));
    }
    m_edit.setNumbers(scene, NodesKey, wanted);
}

void GltfSceneLists::addScene(const JsonValue &scenes)
{
    QByteArrayList numbers;
    for (const quint64 id : m_plan.roots())
        numbers.append(QByteArray::number(m_numberOf(id)));
    if (numbers.isEmpty())
        return;
    const bool isSpaced = m_edit.isSpaced(m_root);
    const QByteArray scene = JsonEdit::inLine({{NodesKey, '[' + numbers.join(isSpaced ? ", " : ",") + ']'}},
                                              isSpaced);
    if (!m_root.find(SceneKey).isPresent())
        m_edit.append(m_root, {SceneKey, "0"});
    if (scenes.isPresent())
        m_edit.appendElement(scenes, scene);
    else
        m_edit.appendList(m_root, ScenesKey, {scene});
}

} // namespace interchange
