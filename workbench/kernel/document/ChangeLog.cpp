#include "ChangeLog.h"

#include "IndexTable.h"
#include "Store.h"

#include <nkKernelServices/nkMetadataTypes.h>

namespace kernel {

namespace {

using Flags = nkMetadataTypes;

bool isRun(ChangeKind kind)
{
    return kind <= ChangeKind::Unlinked;
}

bool isBirth(ChangeKind kind)
{
    return kind == ChangeKind::ObjectBorn || kind == ChangeKind::SetBorn || kind == ChangeKind::EntryBorn
           || kind == ChangeKind::Linked;
}

/// Neighbouring slots of entries and neighbouring links make runs; objects and sets do not lie side by side.
bool canExtend(ChangeKind kind)
{
    return isRun(kind) && kind >= ChangeKind::EntryBorn;
}

void toggleObject(Store &store, Slot slot, bool present, ChangeEffects &effects)
{
    store.setObjectPresent(slot, present);
    effects.flags |= SceneChange;
    const Slot ownSet = store.object(slot).objectSet;
    if (!store.set(ownSet).entries.isEmpty()) {
        effects.flags |= Flags::EntriesChanged | Flags::AssignmentsChanged;
    }
    if (!present) {
        effects.died << store.idOf(slot) << store.idOf(ownSet);
    }
}

void toggleSet(Store &store, Slot slot, bool present, ChangeEffects &effects)
{
    store.setSetPresent(slot, present);
    effects.flags |= Flags::SetsChanged;
    if (!store.set(slot).entries.isEmpty()) {
        effects.flags |= Flags::EntriesChanged;
    }
    if (!present) {
        effects.died << store.idOf(slot);
    }
}

void toggleEntry(Store &store, Slot slot, bool present, ChangeEffects &effects)
{
    const SetRecord &owner = store.set(store.entry(slot).set);
    const bool wasEmpty = owner.entries.isEmpty();
    store.setEntryPresent(slot, present);
    effects.flags |= Flags::EntriesChanged;
    if (owner.owner != NoSlot && owner.entries.isEmpty() != wasEmpty) {
        effects.flags |= Flags::AssignmentsChanged;
    }
}

void toggleOne(Store &store, ChangeKind kind, quint32 slotOrLink, bool present, ChangeEffects &effects)
{
    switch (kind) {
    case ChangeKind::ObjectBorn:
    case ChangeKind::ObjectDied:
        toggleObject(store, slotOrLink, present, effects);
        break;
    case ChangeKind::SetBorn:
    case ChangeKind::SetDied:
        toggleSet(store, slotOrLink, present, effects);
        break;
    case ChangeKind::EntryBorn:
    case ChangeKind::EntryDied:
        toggleEntry(store, slotOrLink, present, effects);
        break;
    default:
        store.setLinkPresent(slotOrLink, present);
        effects.flags |= Flags::AssignmentsChanged;
        break;
    }
}

} // namespace

void ChangeLog::toggle(Store &store, ChangeKind kind, quint32 slotOrLink, ChangeEffects &effects)
{
    toggleOne(store, kind, slotOrLink, isBirth(kind), effects);
    if (!extendRun(kind, slotOrLink)) {
        m_changes.push_back({kind, 0, slotOrLink, 1});
    }
}

bool ChangeLog::extendRun(ChangeKind kind, quint32 next)
{
    if (m_changes.empty() || !canExtend(kind)) {
        return false;
    }
    Change &last = m_changes.back();
    if (last.kind != kind || last.first + last.extra != next) {
        return false;
    }
    ++last.extra;
    return true;
}

void ChangeLog::record(Store &store, Change change, ChangeEffects &effects)
{
    m_changes.push_back(change);
    exchange(store, m_changes.back(), effects);
}

void ChangeLog::changeName(Store &store, ChangeKind kind, Slot slot, const QString &name,
                           ChangeEffects &effects)
{
    m_names.push_back(name);
    record(store, {kind, NameProperty, slot, quint32(m_names.size() - 1)}, effects);
}

void ChangeLog::changeLock(Store &store, ChangeKind kind, Slot slot, ChangeEffects &effects)
{
    record(store, {kind, LockedProperty, slot, 0}, effects);
}

void ChangeLog::changePlace(Store &store, Slot object, const ObjectPlace &place, ChangeEffects &effects)
{
    m_places.push_back(place);
    record(store, {ChangeKind::ObjectPlacing, 0, object, quint32(m_places.size() - 1)}, effects);
}

void ChangeLog::changeSceneplate(Store &store, Slot object, const SceneplateRecord &content,
                                 ChangeEffects &effects)
{
    m_sceneplates.push_back(content);
    record(store, {ChangeKind::SceneplateContent, 0, object, quint32(m_sceneplates.size() - 1)}, effects);
}

void ChangeLog::changeColor(Store &store, Slot set, const QColor &color, ChangeEffects &effects)
{
    m_colors.push_back(color);
    record(store, {ChangeKind::SetColor, ColorProperty, set, quint32(m_colors.size() - 1)}, effects);
}

void ChangeLog::changeAsset(Store &store, Slot set, const AssetLink &asset, ChangeEffects &effects)
{
    m_assets.push_back(asset);
    record(store, {ChangeKind::SetAsset, 0, set, quint32(m_assets.size() - 1)}, effects);
}

void ChangeLog::changeKey(Store &store, Slot entry, quint32 key, ChangeEffects &effects)
{
    record(store, {ChangeKind::EntryKey, KeyProperty, entry, key}, effects);
}

void ChangeLog::changeContent(Store &store, Slot entry, EntryValue value, ChangeEffects &effects)
{
    const EntryValue &present = store.entry(entry).value;
    quint8 properties = 0;
    if (present != value) {
        properties |= ValueProperty;
    }
    if (present.isTag() != value.isTag() || present.type() != value.type()) {
        properties |= ValueTypeProperty;
    }
    m_values.push_back(std::move(value));
    record(store, {ChangeKind::EntryContent, properties, entry, quint32(m_values.size() - 1)}, effects);
}

ChangeEffects ChangeLog::undo(Store &store)
{
    ChangeEffects effects;
    for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change) {
        carryOut(store, *change, false, effects);
    }
    return effects;
}

ChangeEffects ChangeLog::redo(Store &store)
{
    ChangeEffects effects;
    for (Change &change : m_changes) {
        carryOut(store, change, true, effects);
    }
    return effects;
}

void ChangeLog::carryOut(Store &store, Change &change, bool forward, ChangeEffects &effects)
{
    if (isRun(change.kind)) {
        carryOutRun(store, change, forward, effects);
    } else {
        exchange(store, change, effects);
    }
}

void ChangeLog::carryOutRun(Store &store, const Change &change, bool forward, ChangeEffects &effects)
{
    const bool present = isBirth(change.kind) == forward;
    for (quint32 done = 0; done < change.extra; ++done) {
        const quint32 offset = forward ? done : change.extra - 1 - done;
        toggleOne(store, change.kind, change.first + offset, present, effects);
    }
}

void ChangeLog::exchange(Store &store, Change &change, ChangeEffects &effects)
{
    switch (change.kind) {
    case ChangeKind::ObjectName:
        store.object(change.first).name.swap(m_names[change.extra]);
        effects.flags |= SceneChange;
        return;
    case ChangeKind::ObjectLock:
        store.object(change.first).locked = !store.object(change.first).locked;
        return;
    case ChangeKind::ObjectPlacing:
        store.swapPlace(change.first, m_places[change.extra]);
        effects.flags |= SceneChange;
        return;
    case ChangeKind::SceneplateContent:
        store.swapSceneplate(change.first, m_sceneplates[change.extra]);
        effects.flags |= SceneChange;
        return;
    case ChangeKind::SetName:
        store.swapSetName(change.first, m_names[change.extra]);
        break;
    case ChangeKind::SetColor:
        std::swap(store.set(change.first).color, m_colors[change.extra]);
        break;
    case ChangeKind::SetLock:
        store.set(change.first).locked = !store.set(change.first).locked;
        break;
    case ChangeKind::SetAsset:
        std::swap(store.set(change.first).asset, m_assets[change.extra]);
        break;
    case ChangeKind::EntryKey:
        store.swapKey(change.first, change.extra);
        effects.flags |= Flags::EntriesChanged;
        return;
    default:
        std::swap(store.entry(change.first).value, m_values[change.extra]);
        effects.flags |= Flags::EntriesChanged;
        return;
    }
    effects.flags |= Flags::SetsChanged;
}

std::vector<PropertyNews> ChangeLog::propertyNews(const Store &store, int from, Slot firstNew) const
{
    std::vector<PropertyNews> news;
    IndexTable places;
    for (size_t index = size_t(from); index < m_changes.size(); ++index) {
        const Change &change = m_changes[index];
        if (change.properties == 0 || change.first >= firstNew) {
            continue;
        }
        const quint64 id = store.idOf(change.first);
        const quint32 place = places.find(mixedHash(id), [&](quint32 other) { return news[other].id == id; });
        if (place != IndexTable::None) {
            news[place].properties |= change.properties;
        } else {
            news.push_back({id, change.properties});
            places.insert(quint32(news.size() - 1), [&](quint32 other) { return mixedHash(news[other].id); });
        }
    }
    return news;
}

} // namespace kernel
