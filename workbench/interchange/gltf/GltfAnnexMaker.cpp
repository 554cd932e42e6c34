#include <interchange/gltf/GltfAnnexMaker.h>

#include <interchange/gltf/GltfKnownObjects.h>
#include <interchange/gltf/GltfObjectPatch.h>

#include <QDir>

#include <algorithm>
#include <numeric>

namespace interchange {

using kernel::Slot;

namespace {

bool isRead(const ExtrasEntry &entry, const kernel::EntryValue &value)
{
    const bool isTag = entry.type == ExtrasType::Tag;
    if (isTag || value.isTag())
        return isTag && value.isTag();
    // On a list the mark tells of its elements, which are texts either way.
    const bool isNumberText = entry.isNumber && entry.type == ExtrasType::String;
    return isNumberText == value.isNumberText() && kernel::isSameValue(entry.value, value.toVariant());
}

} // namespace

GltfAnnexMaker::GltfAnnexMaker(const GltfScene &scene, const SceneSource &source, const QString &folder,
                               const GltfObjectPatch *patched, const GltfKnownObjects *known)
    : m_scene(scene),
      m_source(source),
      m_folder(folder),
      m_patched(patched),
      m_known(known),
      m_document(kernel::Document::the()),
      m_store(m_document.store())
{}

GltfAnnex GltfAnnexMaker::make()
{
    m_assignments = m_document.assignments();
    for (const auto &assignment : qAsConst(m_assignments))
        m_assigned.insert(assignment.objectId, 0);
    m_places.reserve(m_scene.entries.size());
    for (const SceneSource::ObjectOrigin &origin : m_source.objects()) {
        if (m_store.objectSlot(origin.id) != kernel::NoSlot)
            addObject(origin);
    }
    addRemoved();
    addRoots();
    addMaterials();
    addSets();
    addRuns();
    return std::move(m_annex);
}

void GltfAnnexMaker::addObject(const SceneSource::ObjectOrigin &origin)
{
    const Slot slot = m_store.objectSlot(origin.id);
    const kernel::ObjectRecord &record = m_store.object(slot);
    const kernel::SetRecord &set = m_store.set(record.objectSet);
    const bool isKnown = m_known && m_known->has(origin);
    std::vector<qint32> places;
    const bool isPlain = isKnown || findPlaces(origin, set.entries.slots(), places);
    const bool isBare = isPlain && !needsOwn(set) && !record.locked
                        && record.type != nkObjectType::Sceneplate;
    if (isBare && !m_assigned.contains(origin.id))
        return;
    GltfAnnex::Object object = objectOf(record, slot, referenceTo(origin));
    if (!isPlain || needsOwn(set)) {
        object.own = copyOf(record.objectSet);
        object.own->name.clear();
    }
    if (!isPlain)
        describe(object, set.entries.slots(), places);
    keep(origin.id, std::move(object));
}

/// Whether the extras say all.
bool GltfAnnexMaker::findPlaces(const SceneSource::ObjectOrigin &origin, const Slots &entries,
                                std::vector<qint32> &places)
{
    const IndexRange range = entriesOf(origin);
    places.resize(size_t(entries.size()));
    const bool isPlain = isSame(range, entries);
    if (isPlain) {
        std::iota(places.begin(), places.end(), qint32(range.first));
        m_plain.insert(origin.id);
    } else {
        places = placesOf(origin, range, entries);
    }
    m_places.insert(m_places.end(), places.begin(), places.end());
    return isPlain;
}

/// Nothing but the annex holds a group's entries.
void GltfAnnexMaker::addGroup(quint64 id, const GltfAnnex::Reference &reference)
{
    const Slot slot = m_store.objectSlot(id);
    const kernel::ObjectRecord &record = m_store.object(slot);
    GltfAnnex::Object object = objectOf(record, slot, reference);
    const kernel::SetRecord &set = m_store.set(record.objectSet);
    if (!set.entries.isEmpty() || needsOwn(set)) {
        object.own = copyOf(record.objectSet);
        object.own->name.clear();
    }
    keep(id, std::move(object));
}

GltfAnnex::Object GltfAnnexMaker::objectOf(const kernel::ObjectRecord &record, Slot slot,
                                           const GltfAnnex::Reference &reference) const
{
    GltfAnnex::Object object;
    static_cast<GltfAnnex::Reference &>(object) = reference;
    object.isLocked = record.locked;
    if (record.type == nkObjectType::Sceneplate) {
        const kernel::SceneplateRecord plate = m_store.sceneplate(slot);
        object.sceneplate = GltfAnnex::Sceneplate{imageOf(plate.imagePath), plate.placement};
    }
    return object;
}

bool GltfAnnexMaker::needsOwn(const kernel::SetRecord &set) const
{
    return set.locked || set.color != kernel::Store::newSetColor();
}

/// Where there is something to say.
void GltfAnnexMaker::keep(quint64 id, GltfAnnex::Object &&object)
{
    const auto assigned = m_assigned.find(id);
    const bool isAssigned = assigned != m_assigned.end();
    if (!object.own && !object.isLocked && !object.sceneplate && !isAssigned)
        return;
    if (isAssigned)
        *assigned = quint32(m_annex.objects.size());
    m_annex.objects.push_back(std::move(object));
}

/// A folder that is copied with its images still finds them.
QString GltfAnnexMaker::imageOf(const QString &path) const
{
    if (path.isEmpty() || m_folder.isEmpty())
        return path;
    const QString relative = QDir(m_folder).relativeFilePath(path);
    return relative.startsWith(QLatin1String("..")) ? path : relative;
}

IndexRange GltfAnnexMaker::entriesOf(const SceneSource::ObjectOrigin &origin) const
{
    return origin.list == SceneSource::List::Nodes ? m_scene.nodes[origin.index].entries
                                                   : m_scene.materials[origin.index].entries;
}

GltfAnnex::Reference GltfAnnexMaker::referenceTo(SceneSource::List list, quint32 index) const
{
    const auto named = [](const auto &object) { return object.isNamed ? object.name : QString(); };
    if (list == SceneSource::List::Nodes)
        return {GltfAnnex::Reference::Node, index, named(m_scene.nodes[index])};
    return {GltfAnnex::Reference::Material, index, named(m_scene.materials[index])};
}

bool GltfAnnexMaker::isSame(const IndexRange &range, const Slots &entries) const
{
    if (quint32(entries.size()) != range.count)
        return false;
    const ExtrasEntry *read = m_scene.entries.data() + range.first;
    return std::all_of(entries.begin(), entries.end(), [&](Slot entry) {
        const ExtrasEntry &present = *read++;
        return present.key == m_store.key(entry) && isRead(present, m_store.entry(entry).value);
    });
}

std::vector<qint32> GltfAnnexMaker::placesOf(const SceneSource::ObjectOrigin &origin, const IndexRange &range,
                                             const Slots &entries) const
{
    return m_patched && m_patched->isPatched(origin.id) ? patchedPlaces(range, entries)
                                                        : readPlaces(origin, range);
}

std::vector<qint32> GltfAnnexMaker::patchedPlaces(const IndexRange &range, const Slots &entries) const
{
    QHash<QString, qint32> byPath;
    for (quint32 i = range.first; i < range.end(); ++i)
        byPath.insert(ExtrasKey::joined(m_scene.entries[i].path()), qint32(i));
    std::vector<qint32> places;
    for (const Slot entry : entries) {
        const QString path = m_patched->pathOf(m_store.idOf(entry));
        places.push_back(path.isEmpty() ? -1 : byPath.value(path, -1));
    }
    return places;
}

/// Nobody has touched the object's extras: its entries stand there in the order that they were found in.
std::vector<qint32> GltfAnnexMaker::readPlaces(const SceneSource::ObjectOrigin &origin,
                                               const IndexRange &range) const
{
    const SceneSource::EntryOrigin *const first = m_source.entries().data() + origin.entries.first;
    std::vector<qint32> inExtras;
    for (quint32 i = 0; i < origin.entries.count; ++i) {
        if (first[i].isInExtras())
            inExtras.push_back(qint32(i));
    }
    std::sort(inExtras.begin(), inExtras.end(),
              [first](qint32 a, qint32 b) { return first[a].memberOffset < first[b].memberOffset; });
    std::vector<qint32> places(origin.entries.count, -1);
    for (size_t rank = 0; rank < inExtras.size() && rank < range.count; ++rank)
        places[size_t(inExtras[rank])] = qint32(range.first + rank);
    return places;
}

void GltfAnnexMaker::describe(GltfAnnex::Object &object, const Slots &entries,
                              const std::vector<qint32> &places) const
{
    for (int i = 0; i < entries.size(); ++i) {
        const QString &key = m_store.key(entries.at(i));
        const qint32 place = places[size_t(i)];
        if (place < 0)
            object.apart.insert(key);
        else if (m_scene.entries[size_t(place)].key != key)
            object.renamed.insert(key, m_scene.entries[size_t(place)].key);
    }
}

kernel::SetCopy GltfAnnexMaker::copyOf(Slot set) const
{
    const kernel::SetRecord &record = m_store.set(set);
    kernel::SetCopy copy{m_store.setName(set), record.color, {}, record.locked};
    copy.entries.reserve(size_t(record.entries.size()));
    for (const Slot entry : record.entries.slots())
        copy.entries.push_back({m_store.key(entry), m_store.entry(entry).value});
    return copy;
}

void GltfAnnexMaker::addSets()
{
    for (const Slot set : m_store.sharedSets().slots()) {
        const kernel::AssetLink &asset = m_store.set(set).asset;
        if (asset.state != kernel::AssetState::None)
            m_annex.assets.push_back(
                {quint32(m_annex.sets.size()), asset.state, asset.assetId, asset.version});
        m_annex.sets.push_back(copyOf(set));
    }
}

void GltfAnnexMaker::addRuns()
{
    QHash<quint64, quint32> places;
    for (const Slot set : m_store.sharedSets().slots())
        places.insert(m_store.idOf(set), quint32(places.size()));
    quint64 last = 0;
    for (const auto &assignment : qAsConst(m_assignments)) {
        if (assignment.setId != last)
            m_annex.runs.push_back({places.value(assignment.setId), {}});
        last = assignment.setId;
        m_annex.runs.back().objects.push_back(m_assigned.value(assignment.objectId));
    }
}

} // namespace interchange
