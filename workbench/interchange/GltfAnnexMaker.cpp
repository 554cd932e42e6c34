#include <interchange/GltfAnnexMaker.h>

#include <interchange/GltfObjectPatch.h>

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

GltfAnnexMaker::GltfAnnexMaker(const GltfScene &scene, const SceneSource &source,
                               const GltfObjectPatch *patched)
    : m_scene(scene),
      m_source(source),
      m_patched(patched),
      m_document(kernel::Document::the()),
      m_store(m_document.store())
{}

GltfAnnex GltfAnnexMaker::make()
{
    m_assignments = m_document.assignments();
    for (const auto &assignment : qAsConst(m_assignments))
        m_assigned.insert(assignment.objectId, 0);
    m_places.reserve(m_scene.entries.size());
    for (const SceneSource::ObjectOrigin &origin : m_source.objects())
        addObject(origin);
    addSets();
    addRuns();
    return std::move(m_annex);
}

void GltfAnnexMaker::addObject(const SceneSource::ObjectOrigin &origin)
{
    const kernel::ObjectRecord &record = m_store.object(m_store.objectSlot(origin.id));
    const kernel::SetRecord &set = m_store.set(record.objectSet);
    const Slots &entries = set.entries.slots();
    const IndexRange range = entriesOf(origin);
    std::vector<qint32> places(size_t(entries.size()));
    const bool isPlain = isSame(range, entries);
    if (isPlain)
        std::iota(places.begin(), places.end(), qint32(range.first));
    else
        places = placesOf(origin, range, entries);
    m_places.insert(m_places.end(), places.begin(), places.end());
    const bool needsOwn = !isPlain || set.locked || set.color != kernel::Store::newSetColor();
    const auto assigned = m_assigned.find(origin.id);
    if (!needsOwn && !record.locked && assigned == m_assigned.end())
        return;
    GltfAnnex::Object object;
    object.isMaterial = origin.list == SceneSource::List::Materials;
    object.index = origin.index;
    object.name = nameOf(origin);
    object.isLocked = record.locked;
    if (needsOwn) {
        object.own = copyOf(record.objectSet);
        object.own->name.clear();
        describe(object, entries, places);
    }
    if (assigned != m_assigned.end())
        *assigned = quint32(m_annex.objects.size());
    m_annex.objects.push_back(std::move(object));
}

IndexRange GltfAnnexMaker::entriesOf(const SceneSource::ObjectOrigin &origin) const
{
    return origin.list == SceneSource::List::Nodes ? m_scene.nodes[origin.index].entries
                                                   : m_scene.materials[origin.index].entries;
}

QString GltfAnnexMaker::nameOf(const SceneSource::ObjectOrigin &origin) const
{
    const auto named = [](const auto &object) { return object.isNamed ? object.name : QString(); };
    return origin.list == SceneSource::List::Nodes ? named(m_scene.nodes[origin.index])
                                                   : named(m_scene.materials[origin.index]);
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
