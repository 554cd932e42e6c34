#include <interchange/gltf/GltfObjectPatch.h>

#include <interchange/gltf/ExtrasKey.h>
#include <interchange/gltf/PlainValue.h>
#include <interchange/json/JsonEdit.h>
#include <interchange/json/JsonReader.h>

namespace interchange {

using kernel::NoSlot;
using kernel::Slot;

namespace {

const QLatin1String NameKey("name");
const QLatin1String ExtrasKeyword("extras");

std::string_view viewOf(const QByteArray &text, const JsonSpan &span)
{
    return {text.constData() + span.offset, span.length};
}

} // namespace

GltfObjectPatch::GltfObjectPatch(const SceneSource &source, const kernel::Store &store, JsonPatches &patches)
    : m_source(source), m_store(store), m_patches(patches)
{}

bool GltfObjectPatch::isAsRead(const SceneSource::ObjectOrigin &origin) const
{
    const kernel::ObjectRecord &object = m_store.object(m_store.objectSlot(origin.id));
    const QVector<Slot> &entries = m_store.set(object.objectSet).entries.slots();
    if (object.name != origin.name || quint32(entries.size()) != origin.entries.count)
        return false;
    const SceneSource::EntryOrigin *read = m_source.entries().data() + origin.entries.first;
    for (const Slot entry : entries) {
        const bool isSame = m_store.idOf(entry) == read->id && m_store.key(entry) == read->key
                            && (!read->isInExtras()
                                || PlainValue::isTextOf(viewOf(m_source.json, read->valueSpan),
                                                        m_store.entry(entry).value));
        if (!isSame)
            return false;
        ++read;
    }
    return true;
}

void GltfObjectPatch::patch(const SceneSource::ObjectOrigin &origin)
{
    const std::string_view text = viewOf(m_source.json, origin.span);
    m_base = origin.span.offset;
    // The whole text was read before, so a part of it can be.
    JsonReader().read(QByteArray(text.data(), int(text.size())), m_tree);
    m_extras = m_tree.root().find(ExtrasKeyword);
    m_edit = std::make_unique<JsonEdit>(m_tree, m_base, m_patches);
    m_patched.insert(origin.id);
    patchName(origin);
    findPlaces(m_extras);
    planKeys(origin);
    QSet<quint64> known;
    for (quint32 i = origin.entries.first; i < origin.entries.end(); ++i) {
        const SceneSource::EntryOrigin &entry = m_source.entries()[i];
        if (placeOf(entry)) {
            patchEntry(entry);
            known.insert(entry.id);
        }
    }
    const Slot set = m_store.object(m_store.objectSlot(origin.id)).objectSet;
    for (const Slot entry : m_store.set(set).entries.slots()) {
        if (!known.contains(m_store.idOf(entry)))
            addEntry(entry);
    }
    flushAdded();
    m_edit->finish();
}

void GltfObjectPatch::patchName(const SceneSource::ObjectOrigin &origin)
{
    const QString &name = m_store.object(m_store.objectSlot(origin.id)).name;
    if (name == origin.name)
        return;
    const JsonValue member = m_tree.root().find(NameKey);
    if (member.isPresent())
        m_edit->replace(member, JsonEdit::quoted(name));
    else
        m_edit->append(m_tree.root(), {NameKey, JsonEdit::quoted(name)});
}

/// Every member inside the extras with its path; no recursion, however deep they nest.
void GltfObjectPatch::findPlaces(const JsonValue &extras)
{
    m_places.clear();
    std::vector<Place> open;
    if (extras.isObject())
        open.push_back({extras, extras, QStringList()});
    while (!open.empty()) {
        const Place container = open.back();
        open.pop_back();
        for (const JsonValue member : container.member.children()) {
            const Place place{container.member, member, container.path + QStringList(member.key())};
            m_places.emplace(m_base + member.keySpan().offset, place);
            if (member.isObject())
                open.push_back(place);
        }
    }
}

const GltfObjectPatch::Place *GltfObjectPatch::placeOf(const SceneSource::EntryOrigin &origin) const
{
    const auto found = m_places.find(origin.memberOffset);
    return origin.isInExtras() && found != m_places.end() ? &found->second : nullptr;
}

/// The keys that stay what they are: those of members that are no entries, and of entries that keep theirs.
void GltfObjectPatch::planKeys(const SceneSource::ObjectOrigin &origin)
{
    m_taken.clear();
    QSet<quint32> moving;
    for (quint32 i = origin.entries.first; i < origin.entries.end(); ++i) {
        const SceneSource::EntryOrigin &entry = m_source.entries()[i];
        const Slot slot = m_store.entrySlot(entry.id);
        if (slot == NoSlot || m_store.key(slot) != entry.key)
            moving.insert(entry.memberOffset);
    }
    for (const auto &[offset, place] : m_places) {
        if (!moving.contains(offset))
            m_taken[place.object.index()].insert(place.path.last());
    }
}

bool GltfObjectPatch::take(const JsonValue &object, const QString &key)
{
    QSet<QString> &taken = m_taken[object.index()];
    if (taken.contains(key))
        return false;
    taken.insert(key);
    return true;
}

void GltfObjectPatch::patchEntry(const SceneSource::EntryOrigin &origin)
{
    const Place &place = *placeOf(origin);
    const Slot entry = m_store.entrySlot(origin.id);
    if (entry == NoSlot)
        return removeMember(place);
    if (m_store.key(entry) != origin.key)
        return moveOrRename(entry, place);
    const std::string_view text = viewOf(m_source.json, origin.valueSpan);
    const kernel::EntryValue &value = m_store.entry(entry).value;
    if (!PlainValue::isTextOf(text, value))
        m_edit->replace(place.member, PlainValue::textOf(value, text));
    m_paths.insert(origin.id, ExtrasKey::joined(place.path));
}

/// The last step of the path that a key leads to in the object of this path; empty where it leads elsewhere.
QString GltfObjectPatch::segmentFor(const QString &key, const QStringList &path) const
{
    if (path.size() == 1)
        return key;
    const QStringList wanted = ExtrasKey::split(key);
    const bool isBeside = wanted.size() == path.size() && ExtrasKey::joined(wanted) == key
                          && wanted.mid(0, wanted.size() - 1) == path.mid(0, path.size() - 1);
    return isBeside ? wanted.last() : QString();
}

void GltfObjectPatch::moveOrRename(Slot entry, const Place &place)
{
    const QString segment = segmentFor(m_store.key(entry), place.path);
    if (segment.isEmpty() || !take(place.object, segment)) {
        removeMember(place);
        return addEntry(entry);
    }
    const kernel::EntryValue &value = m_store.entry(entry).value;
    removeHidden(place);
    m_edit->rename(place.member, segment);
    if (!PlainValue::isTextOf(place.member.raw(), value))
        m_edit->replace(place.member, PlainValue::textOf(value, place.member.raw()));
    QStringList path = place.path;
    path.last() = segment;
    m_paths.insert(m_store.idOf(entry), ExtrasKey::joined(path));
}

void GltfObjectPatch::removeMember(const Place &place)
{
    m_edit->remove(place.object, place.member);
    removeHidden(place);
}

/// Earlier members of the same key go with the one that hid them: they would come to light.
void GltfObjectPatch::removeHidden(const Place &place)
{
    const QVector<JsonValue> hidden = place.object.hiddenMembers();
    for (const JsonValue &member : hidden) {
        if (member.key() == place.path.last())
            m_edit->remove(place.object, member);
    }
}

void GltfObjectPatch::addEntry(Slot entry)
{
    const QString &key = m_store.key(entry);
    const bool canHold = !m_extras.isPresent() || m_extras.isObject();
    if (!canHold || !take(m_extras.isPresent() ? m_extras : m_tree.root(), key))
        return;
    m_added.append({key, PlainValue::textOf(m_store.entry(entry).value)});
    m_paths.insert(m_store.idOf(entry), ExtrasKey::joined({key}));
}

void GltfObjectPatch::flushAdded()
{
    if (m_extras.isPresent()) {
        for (const JsonEdit::Member &member : qAsConst(m_added))
            m_edit->append(m_extras, member);
    } else if (!m_added.isEmpty()) {
        m_edit->appendObject(m_tree.root(), ExtrasKeyword, m_added);
    }
    m_added.clear();
}

} // namespace interchange
