#include <interchange/SceneImporter.h>

#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkObjectType.h>

namespace interchange {

namespace {

nkObjectType objectType(SceneNodeKind kind)
{
    switch (kind) {
    case SceneNodeKind::Camera:
        return nkObjectType::Camera;
    case SceneNodeKind::Light:
        return nkObjectType::Light;
    case SceneNodeKind::Node:
        break;
    }
    return nkObjectType::Node;
}

/// The value type of everything that is not a tag.
nkMetadataTypes::ValueType valueType(ExtrasType type)
{
    switch (type) {
    case ExtrasType::Integer:
        return nkMetadataTypes::Integer;
    case ExtrasType::Float:
        return nkMetadataTypes::Float;
    case ExtrasType::Boolean:
        return nkMetadataTypes::Boolean;
    case ExtrasType::List:
        return nkMetadataTypes::List;
    case ExtrasType::String:
    case ExtrasType::Tag:
        break;
    }
    return nkMetadataTypes::String;
}

} // namespace

SceneImporter::SceneImporter(const GltfScene &scene, SceneSource &source) : m_scene(scene), m_source(source)
{}

bool SceneImporter::import()
{
    m_source.reserve(m_scene.nodes.size() + m_scene.materials.size(), m_scene.entries.size());
    m_source.rootSpan = m_scene.rootSpan;
    m_source.rootExtrasSpan = m_scene.rootExtrasSpan;
    kernel::DocumentLoader loader;
    return addNodes(loader) && addMaterials(loader) && loader.commit();
}

/// Depth first with a stack of its own, so that ids ascend in the order in which people see the scene.
bool SceneImporter::addNodes(kernel::DocumentLoader &loader)
{
    m_nodeIds.assign(m_scene.nodes.size(), 0);
    std::vector<qint32> waiting(m_scene.roots.rbegin(), m_scene.roots.rend());
    while (!waiting.empty()) {
        const qint32 index = waiting.back();
        waiting.pop_back();
        const SceneNode &node = m_scene.nodes[size_t(index)];
        if (!addNode(loader, index, node.parent < 0 ? 0 : m_nodeIds[size_t(node.parent)]))
            return false;
        for (quint32 i = node.children.end(); i-- > node.children.first;)
            waiting.push_back(m_scene.children[i]);
    }
    return true;
}

bool SceneImporter::addNode(kernel::DocumentLoader &loader, qint32 index, quint64 parentId)
{
    const SceneNode &node = m_scene.nodes[size_t(index)];
    const quint64 id = loader.addObject(objectType(node.kind), node.name, parentId);
    if (id == 0)
        return false;
    m_nodeIds[size_t(index)] = id;
    m_source.add(SceneSource::ObjectOrigin{id, static_cast<quint32>(index), SceneSource::List::Nodes,
                                           node.span, node.extrasSpan});
    return addEntries(loader, id, node.entries);
}

bool SceneImporter::addMaterials(kernel::DocumentLoader &loader)
{
    quint32 index = 0;
    for (const SceneMaterial &material : m_scene.materials) {
        const quint64 id = loader.addObject(nkObjectType::Material, material.name);
        if (id == 0)
            return false;
        m_source.add(SceneSource::ObjectOrigin{id, index++, SceneSource::List::Materials, material.span,
                                               material.extrasSpan});
        if (!addEntries(loader, id, material.entries))
            return false;
    }
    return true;
}

bool SceneImporter::addEntries(kernel::DocumentLoader &loader, quint64 objectId, const IndexRange &range)
{
    if (range.count == 0)
        return true;
    const quint64 setId = loader.objectSet(objectId);
    for (quint32 i = range.first; i < range.end(); ++i) {
        const ExtrasEntry &entry = m_scene.entries[i];
        const quint64 id = addEntry(loader, setId, entry);
        if (id == 0)
            return false;
        m_source.add(SceneSource::EntryOrigin{id, entry.memberOffset, entry.valueSpan, entry.isPath});
    }
    return true;
}

quint64 SceneImporter::addEntry(kernel::DocumentLoader &loader, quint64 setId, const ExtrasEntry &entry)
{
    if (entry.type == ExtrasType::Tag)
        return loader.addTag(setId, entry.key);
    if (entry.type == ExtrasType::String && entry.isNumber)
        return loader.addNumberText(setId, entry.key, entry.value.toString());
    return loader.addEntry(setId, entry.key, valueType(entry.type), entry.value);
}

} // namespace interchange
