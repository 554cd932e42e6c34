#include "Store.h"

#include <utility>

namespace kernel {

namespace {

/// Up to this many entries a set is searched; above it has an index. Sixteen comparisons of numbers that lie
/// side by side cost about as much as one look into a hash table.
constexpr int LargestSearchedSet = 16;

constexpr QRgb NewSetColor = 0xff7f8c9b;

bool isMaterialKind(nkObjectType type)
{
    return type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
}

} // namespace

Store::Store() = default;
Store::~Store() = default;

QList<quint64> Store::idsOf(const QVector<Slot> &slots) const
{
    QList<quint64> ids;
    ids.reserve(slots.size());
    for (const Slot slot : slots) {
        ids.append(m_directory.idOf(slot));
    }
    return ids;
}

nkObjectType Store::typeOf(Slot slot) const
{
    if (slot == NoSlot || !isAlive(slot)) {
        return nkObjectType::Null;
    }
    switch (m_directory.kindOf(slot)) {
    case SlotDirectory::Kind::Object:
        return object(slot).type;
    case SlotDirectory::Kind::Set:
        return nkObjectType::MetadataSet;
    case SlotDirectory::Kind::Entry:
        return nkObjectType::MetadataEntry;
    case SlotDirectory::Kind::Nothing:
        break;
    }
    return nkObjectType::Null;
}

bool Store::isAlive(Slot slot) const
{
    if (!m_directory.isAlive(slot)) {
        return false;
    }
    // Entries live and die with their set, an object's own set with its object.
    switch (m_directory.kindOf(slot)) {
    case SlotDirectory::Kind::Entry:
        return isAlive(entry(slot).set);
    case SlotDirectory::Kind::Set:
        return set(slot).owner == NoSlot || m_directory.isAlive(set(slot).owner);
    default:
        return true;
    }
}

const ObjectRecord *Store::findObject(quint64 id) const
{
    const Slot slot = objectSlot(id);
    return slot == NoSlot ? nullptr : &object(slot);
}

const SetRecord *Store::findSet(quint64 id) const
{
    const Slot slot = setSlot(id);
    return slot == NoSlot ? nullptr : &set(slot);
}

const EntryRecord *Store::findEntry(quint64 id) const
{
    const Slot slot = entrySlot(id);
    return slot == NoSlot ? nullptr : &entry(slot);
}

QString Store::setName(Slot set) const
{
    const SetRecord &record = this->set(set);
    return record.owner == NoSlot ? record.name : object(record.owner).name;
}

bool Store::hasMetadata(Slot object) const
{
    const ObjectRecord &record = this->object(object);
    return record.links.count > 0 || !set(record.objectSet).entries.isEmpty();
}

// Records -----------------------------------------------------------------------------------------------

Slot Store::addObject(nkObjectType type, const QString &name, Slot parent)
{
    ObjectRecord record;
    record.type = type;
    record.name = name;
    // The youngest stands last, also behind what was moved to the end.
    record.place = {parent, std::as_const(*this).childrenBelow(parent, type).lastRank() + RankStep};
    const Slot slot = m_directory.add(SlotDirectory::Kind::Object, m_objects.append(std::move(record)));
    const Slot ownSet = addSet(QString(), QColor());
    set(ownSet).owner = slot;
    m_directory.setAlive(ownSet, true);
    object(slot).objectSet = ownSet;
    return slot;
}

QColor Store::newSetColor()
{
    return QColor(NewSetColor);
}

Slot Store::addSet(const QString &name, const QColor &color)
{
    SetRecord record;
    record.name = name;
    record.color = color.isValid() ? color : newSetColor();
    return m_directory.add(SlotDirectory::Kind::Set, m_sets.append(std::move(record)));
}

Slot Store::addEntry(Slot set, quint32 key, EntryValue value)
{
    EntryRecord record;
    record.value = std::move(value);
    record.key = key;
    record.set = set;
    return m_directory.add(SlotDirectory::Kind::Entry, m_entries.append(std::move(record)));
}

const ChildList &Store::childrenBelow(Slot parent, nkObjectType type) const
{
    if (parent != NoSlot) {
        return object(parent).children;
    }
    return isMaterialKind(type) ? m_topLevelMaterials : m_topLevelNodes;
}

ChildList &Store::childrenBelow(Slot parent, nkObjectType type)
{
    return const_cast<ChildList &>(std::as_const(*this).childrenBelow(parent, type));
}

const ChildList &Store::siblingsOf(Slot object) const
{
    const ObjectRecord &record = this->object(object);
    return childrenBelow(record.place.parent, record.type);
}

ChildList &Store::siblings(const ObjectRecord &object)
{
    return childrenBelow(object.place.parent, object.type);
}

void Store::setObjectPresent(Slot object, bool present)
{
    const ObjectRecord &record = this->object(object);
    ChildList &list = siblings(record);
    if (present) {
        list.insert(object, record.place.rank);
        ++m_objectCount;
        m_entryCount += set(record.objectSet).entries.size();
    } else {
        list.remove(object, record.place.rank);
        --m_objectCount;
        m_entryCount -= set(record.objectSet).entries.size();
    }
    m_directory.setAlive(object, present);
}

void Store::setSetPresent(Slot set, bool present)
{
    const QString &name = this->set(set).name;
    if (present) {
        m_sharedSets.insert(set);
        m_entryCount += this->set(set).entries.size();
        m_setNames.insert(name, set);
    } else {
        m_sharedSets.remove(set);
        m_entryCount -= this->set(set).entries.size();
        m_setNames.remove(name);
        m_uniqueSetNames.released(name);
    }
    m_directory.setAlive(set, present);
}

void Store::setEntryPresent(Slot entry, bool present)
{
    SetRecord &owner = set(this->entry(entry).set);
    if (present) {
        owner.entries.insert(entry);
        indexKey(owner, entry);
    } else {
        unindexKey(owner, entry);
        owner.entries.remove(entry);
    }
    // Those of a set that is not there count when it comes.
    if (isAlive(this->entry(entry).set)) {
        m_entryCount += present ? 1 : -1;
    }
    m_directory.setAlive(entry, present);
}

// Keys and names ----------------------------------------------------------------------------------------

void Store::indexKey(SetRecord &set, Slot entry)
{
    const auto hashOf = [this](Slot slot) { return keyHash(slot); };
    if (set.index) {
        set.index->entries.insert(entry, hashOf);
    } else if (set.entries.size() > LargestSearchedSet) {
        set.index = std::make_unique<KeyIndex>();
        for (const Slot slot : set.entries.slots()) {
            set.index->entries.insert(slot, hashOf);
        }
    }
}

void Store::unindexKey(SetRecord &set, Slot entry)
{
    if (set.index) {
        set.index->entries.remove(entry, [this](Slot slot) { return keyHash(slot); });
        set.index->names.released(key(entry));
    }
}

Slot Store::findKey(Slot set, quint32 key) const
{
    const SetRecord &record = this->set(set);
    const auto hasKey = [this, key](Slot slot) { return entry(slot).key == key; };
    if (record.index) {
        return record.index->entries.find(mixedHash(key), hasKey);
    }
    for (const Slot slot : record.entries.slots()) {
        if (hasKey(slot)) {
            return slot;
        }
    }
    return NoSlot;
}

Slot Store::findKey(Slot set, const QString &key) const
{
    const quint32 number = m_keys.find(key);
    return number == KeyPool::None ? NoSlot : findKey(set, number);
}

QString Store::uniqueKey(Slot set, const QString &base) const
{
    const auto isTaken = [&](const QString &key) { return findKey(set, key) != NoSlot; };
    const SetRecord &record = this->set(set);
    return record.index ? record.index->names.unique(base, isTaken) : UniqueNames().unique(base, isTaken);
}

QString Store::uniqueSetName(const QString &base, Slot except) const
{
    const auto isTaken = [&](const QString &name) { return m_setNames.value(name, except) != except; };
    // With an exception the answer holds for that set alone and is not to be remembered.
    return except == NoSlot ? m_uniqueSetNames.unique(base, isTaken) : UniqueNames().unique(base, isTaken);
}

void Store::swapSetName(Slot set, QString &name)
{
    SetRecord &record = this->set(set);
    m_setNames.remove(record.name);
    m_uniqueSetNames.released(record.name);
    record.name.swap(name);
    m_setNames.insert(record.name, set);
}

void Store::swapPlace(Slot object, ObjectPlace &place)
{
    ObjectRecord &record = this->object(object);
    siblings(record).remove(object, record.place.rank);
    std::swap(record.place, place);
    siblings(record).insert(object, record.place.rank);
}

void Store::swapSceneplate(Slot object, SceneplateRecord &content)
{
    std::swap(m_sceneplates[object], content);
}

void Store::swapKey(Slot entry, quint32 &key)
{
    SetRecord &owner = set(this->entry(entry).set);
    unindexKey(owner, entry);
    std::swap(this->entry(entry).key, key);
    if (owner.index) {
        indexKey(owner, entry);
    }
}

} // namespace kernel
