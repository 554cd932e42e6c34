#include <interchange/gltf/SceneImporter.h>

#include <interchange/gltf/PlainValue.h>
#include <interchange/json/JsonPath.h>

#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkObjectType.h>

#include <QDir>
#include <QFileInfo>

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

SceneImporter::SceneImporter(GltfScene &scene, const GltfAnnex &annex, SceneSource &source)
    : m_scene(scene), m_annex(annex), m_source(source), m_match(scene, annex)
{}

bool SceneImporter::import()
{
    m_source.reserve(m_scene.nodes.size() + m_scene.materials.size(), m_scene.entries.size());
    m_source.rootSpan = m_scene.rootSpan;
    m_source.rootExtrasSpan = m_scene.rootExtrasSpan;
    for (const GltfAnnex::Reference &removed : m_match.removed())
        m_source.removed.push_back({removed.kind == GltfAnnex::Reference::Material
                                        ? SceneSource::List::Materials
                                        : SceneSource::List::Nodes,
                                    removed.index});
    Loader loader;
    if (!addNodes(loader) || !addMaterials(loader))
        return false;
    addSets(loader);
    if (!loader.commit())
        return false;
    m_source.noteTree(m_scene);
    return true;
}

/// Depth first with a stack of its own, so that ids ascend in the order in which people see the scene.
bool SceneImporter::addNodes(Loader &loader)
{
    m_nodeIds.assign(m_scene.nodes.size(), 0);
    std::vector<qint32> waiting(m_match.roots().rbegin(), m_match.roots().rend());
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

bool SceneImporter::addNode(Loader &loader, qint32 index, quint64 parentId)
{
    const SceneNode &node = m_scene.nodes[size_t(index)];
    const GltfAnnex::Object *const annex = m_match.find(GltfAnnex::Reference::Node, quint32(index));
    const bool isSceneplate = annex && annex->sceneplate && node.kind == SceneNodeKind::Node;
    const nkObjectType type = isSceneplate ? nkObjectType::Sceneplate : objectType(node.kind);
    const quint64 id = loader.addObject(type, node.name, parentId);
    if (id == 0)
        return false;
    if (isSceneplate)
        addSceneplate(loader, id, *annex->sceneplate);
    m_nodeIds[size_t(index)] = id;
    SceneSource::ObjectOrigin origin;
    origin.id = id;
    origin.index = quint32(index);
    origin.span = node.span;
    origin.extrasSpan = node.extrasSpan;
    origin.name = node.name;
    origin.isPlain = !annex || !annex->own;
    m_source.add(origin);
    return addContent(loader, id, node.entries, annex);
}

void SceneImporter::addSceneplate(Loader &loader, quint64 id, const GltfAnnex::Sceneplate &sceneplate)
{
    const QDir folder = QFileInfo(m_source.filePath).dir();
    const QString image = sceneplate.image.isEmpty() ? QString()
                                                     : QDir::cleanPath(folder.filePath(sceneplate.image));
    loader.setSceneplate(id, image, sceneplate.placement);
}

bool SceneImporter::addMaterials(Loader &loader)
{
    m_materialIds.assign(m_scene.materials.size(), 0);
    for (const GltfAnnex::MaterialItem &item : m_match.materials()) {
        const quint64 groupId = item.group < 0 ? 0 : m_groupIds[size_t(item.group)];
        const bool isAdded = item.kind == GltfAnnex::Reference::Group
                                 ? addGroup(loader, item, groupId)
                                 : addMaterial(loader, item.index, groupId);
        if (!isAdded)
            return false;
    }
    return true;
}

bool SceneImporter::addMaterial(Loader &loader, quint32 index, quint64 groupId)
{
    const SceneMaterial &material = m_scene.materials[index];
    const quint64 id = loader.addObject(nkObjectType::Material, material.name, groupId);
    if (id == 0)
        return false;
    m_materialIds[index] = id;
    SceneSource::ObjectOrigin origin;
    origin.id = id;
    origin.index = index;
    origin.list = SceneSource::List::Materials;
    origin.span = material.span;
    origin.extrasSpan = material.extrasSpan;
    origin.name = material.name;
    const GltfAnnex::Object *const annex = m_match.find(GltfAnnex::Reference::Material, index);
    origin.isPlain = !annex || !annex->own;
    m_source.add(origin);
    return addContent(loader, id, material.entries, annex);
}

/// A group stands in the annex alone, with its entries: there are no extras of others to be compared with.
bool SceneImporter::addGroup(Loader &loader, const GltfAnnex::MaterialItem &group, quint64 groupId)
{
    const quint64 id = loader.addObject(nkObjectType::MaterialGroup, group.name, groupId);
    m_groupIds.push_back(id);
    const GltfAnnex::Object *const annex = m_match.find(GltfAnnex::Reference::Group, group.index);
    if (annex && annex->isLocked)
        loader.lockObject(id);
    if (!annex || !annex->own)
        return id != 0;
    const quint64 setId = loader.objectSet(id);
    loader.setColor(setId, annex->own->color);
    if (annex->own->locked)
        loader.lockSet(setId);
    for (const kernel::EntryCopy &entry : annex->own->entries)
        add(loader, setId, entry);
    return id != 0;
}

bool SceneImporter::addContent(Loader &loader, quint64 objectId, const IndexRange &range,
                               const GltfAnnex::Object *annex)
{
    if (annex && annex->isLocked)
        loader.lockObject(objectId);
    if (range.count == 0 && !annex)
        return true;
    const quint64 setId = loader.objectSet(objectId);
    if (annex && annex->own)
        return addOwn(loader, setId, range, *annex);
    for (quint32 i = range.first; i < range.end(); ++i) {
        if (!addPlain(loader, setId, i, m_scene.entries[i].key))
            return false;
    }
    return true;
}

bool SceneImporter::addPlain(Loader &loader, quint64 setId, quint32 entry, const QString &key)
{
    const ExtrasEntry &read = m_scene.entries[entry];
    const quint64 id = add(loader, setId, key, read);
    note(id, &read, key);
    return id != 0;
}

/// The annex knows the entries of a set with their types and in their order, but the extras are what everybody sees
/// and changes: where the two differ, the extras count.
bool SceneImporter::addOwn(Loader &loader, quint64 setId, const IndexRange &range,
                           const GltfAnnex::Object &annex)
{
    loader.setColor(setId, annex.own->color);
    if (annex.own->locked)
        loader.lockSet(setId);
    QHash<QString, quint32> byKey;
    for (quint32 i = range.first; i < range.end(); ++i)
        byKey.insert(m_scene.entries[i].key, i);
    for (const kernel::EntryCopy &entry : annex.own->entries) {
        const QString keyInExtras = annex.renamed.value(entry.key, entry.key);
        const auto found = annex.apart.contains(entry.key) ? byKey.end() : byKey.find(keyInExtras);
        if (found == byKey.end() && !annex.apart.contains(entry.key)) {
            m_scene.report.addRefused(entry.key, ImportReason::GoneElsewhere);
            continue;
        }
        if (!addOwnEntry(loader, setId, entry, found == byKey.end() ? -1 : qint64(*found)))
            return false;
        if (found != byKey.end())
            byKey.erase(found);
    }
    for (quint32 i = range.first; i < range.end(); ++i) {
        const QString &key = m_scene.entries[i].key;
        if (byKey.contains(key) && !addPlain(loader, setId, i, key))
            return false;
    }
    return true;
}

/// @param place in the scene's entries; -1 for an entry that stands in the annex alone
bool SceneImporter::addOwnEntry(Loader &loader, quint64 setId, const kernel::EntryCopy &entry, qint64 place)
{
    if (place >= 0) {
        const ExtrasEntry &read = m_scene.entries[size_t(place)];
        const std::string_view text(m_source.json.constData() + read.valueSpan.offset, read.valueSpan.length);
        if (!PlainValue::isTextOf(text, entry.value)) {
            m_scene.report.addConverted(entry.key, ImportReason::ChangedElsewhere);
            return addPlain(loader, setId, quint32(place), entry.key);
        }
    }
    const quint64 id = add(loader, setId, entry);
    note(id, place < 0 ? nullptr : &m_scene.entries[size_t(place)], entry.key);
    return id != 0;
}

void SceneImporter::note(quint64 id, const ExtrasEntry *entry, const QString &key)
{
    SceneSource::EntryOrigin origin{id, 0, JsonSpan(), false, key};
    if (entry) {
        origin.memberOffset = entry->memberOffset;
        origin.valueSpan = entry->valueSpan;
        origin.isPath = entry->isPath;
    }
    m_source.add(origin);
}

void SceneImporter::addSets(Loader &loader)
{
    std::vector<quint64> sets;
    for (const kernel::SetCopy &set : m_annex.sets) {
        sets.push_back(loader.addSet(set.name, set.color, set.locked));
        for (const kernel::EntryCopy &entry : set.entries)
            add(loader, sets.back(), entry);
    }
    for (const GltfAnnex::Asset &asset : m_annex.assets)
        loader.setAsset(sets[asset.set], asset.state, asset.id, asset.version);
    QHash<quint32, quint64> objects;
    const auto addIds = [&](GltfAnnexMatch::Kind kind, const std::vector<quint64> &ids) {
        const QHash<quint32, quint32> &places = m_match.objects(kind);
        for (auto at = places.cbegin(); at != places.cend(); ++at)
            objects.insert(at.value(), ids[at.key()]);
    };
    addIds(GltfAnnex::Reference::Node, m_nodeIds);
    addIds(GltfAnnex::Reference::Material, m_materialIds);
    addIds(GltfAnnex::Reference::Group, m_groupIds);
    for (const GltfAnnex::Run &run : m_annex.runs) {
        for (const quint32 object : run.objects)
            loader.assign(sets[run.set], objects.value(object));
    }
}

quint64 SceneImporter::add(Loader &loader, quint64 setId, const QString &key, const ExtrasEntry &entry)
{
    if (entry.type == ExtrasType::Tag)
        return loader.addTag(setId, key);
    if (entry.type == ExtrasType::String && entry.isNumber)
        return loader.addNumberText(setId, key, entry.value.toString());
    return loader.addEntry(setId, key, valueType(entry.type), entry.value);
}

quint64 SceneImporter::add(Loader &loader, quint64 setId, const kernel::EntryCopy &entry)
{
    if (entry.value.isTag())
        return loader.addTag(setId, entry.key);
    if (entry.value.isNumberText())
        return loader.addNumberText(setId, entry.key, entry.value.toVariant().toString());
    return loader.addEntry(setId, entry.key, entry.value.type(), entry.value.toVariant());
}

} // namespace interchange
