#include <interchange/foreign/ForeignImporter.h>

#include <kernel/document/EntryValue.h>

#include <nkKernelServices/nkMetadataTypes.h>

#include <algorithm>

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

/// Names of sets are made unique by numbers at their end.
QString withoutNumber(QString name)
{
    while (!name.isEmpty() && name.at(name.size() - 1).isDigit())
        name.chop(1);
    return name;
}

template <typename List>
std::vector<qint32> placesOf(const List &list, const QHash<QString, qint32> &saved)
{
    std::vector<qint32> places;
    places.reserve(list.size());
    for (const auto &object : list)
        places.push_back(saved.value(object.key, -1));
    return places;
}

} // namespace

ForeignImporter::ForeignImporter(ForeignScene &scene, const Sidecar *sidecar, SceneSource &source,
                                 ForeignOrigin &origin)
    : m_scene(scene), m_sidecar(sidecar), m_source(source), m_origin(origin)
{}

bool ForeignImporter::import()
{
    m_source.reserve(m_scene.nodes.size() + m_scene.materials.size(), 0);
    m_source.geometry = m_scene.geometry;
    findKnown();
    Loader loader;
    if (!addNodes(loader) || !addMaterials(loader))
        return false;
    if (m_sidecar) {
        addSavedSets(loader);
        assignSaved(loader);
        noteGone();
    }
    addModelSets(loader);
    // The sidecar is about the objects of the model and cannot say that there are others.
    loader.fixTree();
    return loader.commit();
}

void ForeignImporter::findKnown()
{
    QHash<QString, qint32> nodes;
    QHash<QString, qint32> materials;
    for (size_t i = 0; m_sidecar && i < m_sidecar->objects.size(); ++i) {
        const Sidecar::Object &object = m_sidecar->objects[i];
        (object.isMaterial ? materials : nodes).insert(object.key, qint32(i));
    }
    m_knownNodes = placesOf(m_scene.nodes, nodes);
    m_knownMaterials = placesOf(m_scene.materials, materials);
}

bool ForeignImporter::addNodes(Loader &loader)
{
    m_nodeIds.reserve(m_scene.nodes.size());
    for (size_t i = 0; i < m_scene.nodes.size(); ++i) {
        const ForeignScene::Node &node = m_scene.nodes[i];
        const quint64 parent = node.parent < 0 ? 0 : m_nodeIds[size_t(node.parent)];
        const quint64 id = addObject(loader, objectType(node.kind), node.name, parent, m_knownNodes[i]);
        if (id == 0)
            return false;
        m_nodeIds.push_back(id);
        note(id, quint32(i), SceneSource::List::Nodes, node.name);
        m_origin.objects.push_back({node.key, parent});
        addContent(loader, id, node.entries, m_knownNodes[i]);
    }
    return true;
}

bool ForeignImporter::addMaterials(Loader &loader)
{
    for (size_t i = 0; i < m_scene.materials.size(); ++i) {
        const ForeignScene::Material &material = m_scene.materials[i];
        const quint64 id = addObject(loader, nkObjectType::Material, material.name, 0, m_knownMaterials[i]);
        if (id == 0)
            return false;
        note(id, quint32(i), SceneSource::List::Materials, material.name);
        m_origin.objects.push_back({material.key, 0});
        addContent(loader, id, material.entries, m_knownMaterials[i]);
    }
    return true;
}

void ForeignImporter::note(quint64 id, quint32 index, SceneSource::List list, const QString &name)
{
    SceneSource::ObjectOrigin origin;
    origin.id = id;
    origin.index = index;
    origin.list = list;
    origin.name = name;
    m_source.add(origin);
}

/// @param known the place in the sidecar's objects
quint64 ForeignImporter::addObject(Loader &loader, nkObjectType type, const QString &name, quint64 parentId,
                                   qint32 known)
{
    const Sidecar::Object *saved = known < 0 ? nullptr : &m_sidecar->objects[size_t(known)];
    const quint64 id = loader.addObject(type, saved && saved->renamed ? *saved->renamed : name, parentId);
    if (saved) {
        m_ids.insert(quint32(known), id);
        if (saved->isLocked)
            loader.lockObject(id);
    } else if (m_sidecar) {
        m_scene.report.addNote(name, ImportReason::NewObject);
    }
    return id;
}

void ForeignImporter::addContent(Loader &loader, quint64 id, const IndexRange &range, qint32 known)
{
    if (known < 0)
        return addEntries(loader, loader.objectSet(id), range);
    const auto &own = m_sidecar->objects[size_t(known)].own;
    if (!own)
        return;
    const quint64 setId = loader.objectSet(id);
    loader.setColor(setId, own->color);
    if (own->locked)
        loader.lockSet(setId);
    for (const kernel::EntryCopy &entry : own->entries)
        add(loader, setId, entry);
}

void ForeignImporter::addEntries(Loader &loader, quint64 setId, const IndexRange &range)
{
    for (quint32 i = range.first; i < range.end(); ++i) {
        const ForeignScene::Entry &entry = m_scene.entries[i];
        if (entry.isTag)
            loader.addTag(setId, entry.key);
        else
            loader.addEntry(setId, entry.key, entry.type, entry.value);
    }
}

void ForeignImporter::addSavedSets(Loader &loader)
{
    for (const kernel::SetCopy &set : m_sidecar->sets) {
        m_savedByName.insert(withoutNumber(set.name), qint32(m_savedIds.size()));
        m_savedIds.push_back(loader.addSet(set.name, set.color, set.locked));
        for (const kernel::EntryCopy &entry : set.entries)
            add(loader, m_savedIds.back(), entry);
    }
    for (const Sidecar::Asset &asset : m_sidecar->assets)
        loader.setAsset(m_savedIds[asset.set], asset.state, asset.id, asset.version);
}

void ForeignImporter::assignSaved(Loader &loader)
{
    QHash<quint32, std::vector<quint64>> ofGone;
    for (const Sidecar::Run &run : m_sidecar->runs) {
        for (const quint32 object : run.objects) {
            const auto known = m_ids.constFind(object);
            if (known != m_ids.constEnd())
                loader.assign(m_savedIds[run.set], *known);
            else
                ofGone[object].push_back(m_savedIds[run.set]);
        }
    }
    for (size_t i = 0; i < m_sidecar->objects.size(); ++i) {
        if (!m_ids.contains(quint32(i)))
            m_origin.gone.push_back({m_sidecar->objects[i], ofGone.value(quint32(i))});
    }
}

/// Only those that something would be lost of.
void ForeignImporter::noteGone()
{
    for (const ForeignOrigin::Gone &gone : m_origin.gone) {
        const Sidecar::Object &object = gone.object;
        if (object.own || object.isLocked || object.renamed || !gone.setIds.empty())
            m_scene.report.addRefused(object.key, ImportReason::GoneObject, object.name);
    }
}

/// Where there is a sidecar, its objects have the sets that it says, and the model's sets come with new objects only.
void ForeignImporter::addModelSets(Loader &loader)
{
    for (const ForeignScene::Set &set : m_scene.sets) {
        std::vector<quint64> objects;
        for (const quint32 node : set.nodes) {
            if (m_knownNodes[node] < 0)
                objects.push_back(m_nodeIds[node]);
        }
        if (m_sidecar && objects.empty())
            continue;
        const quint64 id = modelSet(loader, set);
        for (const quint64 object : objects)
            loader.assign(id, object);
    }
}

quint64 ForeignImporter::modelSet(Loader &loader, const ForeignScene::Set &set)
{
    const qint32 saved = savedSet(set);
    if (saved >= 0)
        return m_savedIds[size_t(saved)];
    const quint64 id = loader.addSet(set.name);
    addEntries(loader, id, set.entries);
    return id;
}

/// The set of the sidecar that is this one: the first of its name, maybe with another number, and its entries.
qint32 ForeignImporter::savedSet(const ForeignScene::Set &set) const
{
    qint32 found = -1;
    const auto range = m_savedByName.equal_range(withoutNumber(set.name));
    for (auto at = range.first; at != range.second; ++at) {
        const bool isFirst = found < 0 || *at < found;
        if (isFirst && hasSame(m_sidecar->sets[size_t(*at)], set.entries))
            found = *at;
    }
    return found;
}

bool ForeignImporter::hasSame(const kernel::SetCopy &saved, const IndexRange &range) const
{
    const ForeignScene::Entry *read = m_scene.entries.data() + range.first;
    return saved.entries.size() == range.count
           && std::all_of(saved.entries.begin(), saved.entries.end(), [&](const kernel::EntryCopy &entry) {
                  const ForeignScene::Entry &present = *read++;
                  return entry.key == present.key && entry.value.isTag() == present.isTag
                         && (present.isTag
                             || (entry.value.type() == present.type
                                 && kernel::isSameValue(entry.value.toVariant(), present.value)));
              });
}

void ForeignImporter::add(Loader &loader, quint64 setId, const kernel::EntryCopy &entry)
{
    if (entry.value.isTag())
        loader.addTag(setId, entry.key);
    else if (entry.value.isNumberText())
        loader.addNumberText(setId, entry.key, entry.value.toVariant().toString());
    else
        loader.addEntry(setId, entry.key, entry.value.type(), entry.value.toVariant());
}

} // namespace interchange
