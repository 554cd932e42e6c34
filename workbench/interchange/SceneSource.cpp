#include <interchange/SceneSource.h>

#include <interchange/gltf/GltfScene.h>

#include <kernel/document/Document.h>
#include <kernel/document/Store.h>

#include <algorithm>
#include <numeric>

namespace interchange {

void SceneSource::reserve(size_t objectCount, size_t entryCount)
{
    m_objects.reserve(objectCount);
    m_entries.reserve(entryCount);
}

void SceneSource::add(const ObjectOrigin &origin)
{
    m_objects.push_back(origin);
    m_objects.back().entries = {quint32(m_entries.size()), 0};
}

void SceneSource::add(const EntryOrigin &origin)
{
    m_entries.push_back(origin);
    ++m_objects.back().entries.count;
    m_byId.clear();
}

void SceneSource::noteTree(const GltfScene &scene)
{
    std::vector<quint64> ids(scene.nodes.size(), 0);
    for (const ObjectOrigin &origin : m_objects) {
        if (origin.list == List::Nodes)
            ids[origin.index] = origin.id;
    }
    m_children.clear();
    for (ObjectOrigin &origin : m_objects) {
        if (origin.list != List::Nodes)
            continue;
        const SceneNode &node = scene.nodes[origin.index];
        if (node.parent >= 0)
            origin.parentId = ids[size_t(node.parent)];
        else if (kernel::Document::the().typeOf(origin.id) != nkObjectType::Null)
            origin.parentId = 0;
        origin.children = {quint32(m_children.size()), node.children.count};
        for (quint32 i = node.children.first; i < node.children.end(); ++i)
            m_children.push_back(ids[size_t(scene.children[i])]);
    }
    const kernel::Store &store = kernel::Document::the().store();
    rootIds.clear();
    for (const kernel::Slot root : store.topLevelNodes().slots())
        rootIds.push_back(store.idOf(root));
}

const SceneSource::ObjectOrigin *SceneSource::object(quint64 id) const
{
    const auto less = [](const ObjectOrigin &origin, quint64 wanted) { return origin.id < wanted; };
    const auto found = std::lower_bound(m_objects.begin(), m_objects.end(), id, less);
    return found != m_objects.end() && found->id == id ? &*found : nullptr;
}

const SceneSource::EntryOrigin *SceneSource::entry(quint64 id) const
{
    if (m_byId.empty()) {
        m_byId.resize(m_entries.size());
        std::iota(m_byId.begin(), m_byId.end(), 0u);
        std::sort(m_byId.begin(), m_byId.end(),
                  [this](quint32 a, quint32 b) { return m_entries[a].id < m_entries[b].id; });
    }
    const auto less = [this](quint32 place, quint64 wanted) { return m_entries[place].id < wanted; };
    const auto found = std::lower_bound(m_byId.begin(), m_byId.end(), id, less);
    return found != m_byId.end() && m_entries[*found].id == id ? &m_entries[*found] : nullptr;
}

std::shared_ptr<SceneSource> SceneSource::blank()
{
    auto source = std::make_shared<SceneSource>();
    source->json = QByteArrayLiteral("{\n  \"asset\": {\"version\": \"2.0\"}\n}\n");
    source->jsonLength = source->json.size();
    return source;
}

} // namespace interchange
