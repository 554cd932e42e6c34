#include <interchange/SceneImporter.h>

#include <interchange/JsonPath.h>
#include <interchange/PlainValue.h>

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

/// The only object of this name; -1 where there are none or several.
template <typename List>
qint64 onlyOne(const List &list, const QString &name)
{
    qint64 found = -1;
    for (size_t i = 0; i < list.size(); ++i) {
        if (!list[i].isNamed || list[i].name != name)
            continue;
        if (found >= 0)
            return -1;
        found = qint64(i);
    }
    return found;
}

/// Other programs move objects in their lists: a name that fits says more than a place.
template <typename List>
qint64 placeOf(const List &list, quint32 index, const QString &name)
{
    const bool isThere = index < list.size() && (list[index].isNamed ? list[index].name : QString()) == name;
    return isThere ? index : name.isEmpty() ? -1 : onlyOne(list, name);
}

} // namespace

SceneImporter::SceneImporter(GltfScene &scene, const GltfAnnex &annex, SceneSource &source)
    : m_scene(scene), m_annex(annex), m_source(source)
{}

bool SceneImporter::import()
{
    m_source.reserve(m_scene.nodes.size() + m_scene.materials.size(), m_scene.entries.size());
    m_source.rootSpan = m_scene.rootSpan;
    m_source.rootExtrasSpan = m_scene.rootExtrasSpan;
    findAnnexObjects();
    Loader loader;
    if (!addNodes(loader) || !addMaterials(loader))
        return false;
    addSets(loader);
    return loader.commit();
}

void SceneImporter::findAnnexObjects()
{
    for (size_t i = 0; i < m_annex.objects.size(); ++i) {
        const GltfAnnex::Object &object = m_annex.objects[i];
        QHash<quint32, quint32> &known = object.isMaterial ? m_annexOfMaterial : m_annexOfNode;
        const qint64 index = indexOf(object);
        if (index < 0 || known.contains(quint32(index)))
            m_scene.report.addRefused(annexPath(i), ImportReason::UnknownObject, object.name);
        else
            known.insert(quint32(index), quint32(i));
    }
}

qint64 SceneImporter::indexOf(const GltfAnnex::Object &object) const
{
    return object.isMaterial ? placeOf(m_scene.materials, object.index, object.name)
                             : placeOf(m_scene.nodes, object.index, object.name);
}

const GltfAnnex::Object *SceneImporter::annexOf(bool isMaterial, quint32 index) const
{
    const QHash<quint32, quint32> &known = isMaterial ? m_annexOfMaterial : m_annexOfNode;
    const auto found = known.find(index);
    return found == known.end() ? nullptr : &m_annex.objects[*found];
}

QString SceneImporter::annexPath(size_t object) const
{
    JsonPath path;
    path.append(QStringLiteral("extras")).append(QString(GltfAnnex::Member));
    return path.append(QString::fromLatin1(GltfAnnexNames::Objects)).append(quint32(object)).text();
}

/// Depth first with a stack of its own, so that ids ascend in the order in which people see the scene.
bool SceneImporter::addNodes(Loader &loader)
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

bool SceneImporter::addNode(Loader &loader, qint32 index, quint64 parentId)
{
    const SceneNode &node = m_scene.nodes[size_t(index)];
    const quint64 id = loader.addObject(objectType(node.kind), node.name, parentId);
    if (id == 0)
        return false;
    m_nodeIds[size_t(index)] = id;
    m_source.add(SceneSource::ObjectOrigin{id, static_cast<quint32>(index), SceneSource::List::Nodes,
                                           node.span, node.extrasSpan, node.name, IndexRange()});
    return addContent(loader, id, node.entries, annexOf(false, quint32(index)));
}

bool SceneImporter::addMaterials(Loader &loader)
{
    quint32 index = 0;
    for (const SceneMaterial &material : m_scene.materials) {
        const quint64 id = loader.addObject(nkObjectType::Material, material.name);
        if (id == 0)
            return false;
        m_materialIds.push_back(id);
        m_source.add(SceneSource::ObjectOrigin{id, index, SceneSource::List::Materials, material.span,
                                               material.extrasSpan, material.name, IndexRange()});
        if (!addContent(loader, id, material.entries, annexOf(true, index++)))
            return false;
    }
    return true;
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
    for (auto at = m_annexOfNode.cbegin(); at != m_annexOfNode.cend(); ++at)
        objects.insert(at.value(), m_nodeIds[at.key()]);
    for (auto at = m_annexOfMaterial.cbegin(); at != m_annexOfMaterial.cend(); ++at)
        objects.insert(at.value(), m_materialIds[at.key()]);
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
