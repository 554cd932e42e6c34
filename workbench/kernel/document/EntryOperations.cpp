#include "EntryOperations.h"

#include "Document.h"
#include "Operation.h"
#include "Store.h"
#include "ValueConversion.h"

namespace kernel {

namespace {

const Store &openStore()
{
    return Document::the().store();
}

/// The slot of a living entry whose set may be edited; NoSlot otherwise.
Slot editableEntry(quint64 id)
{
    const Store &store = openStore();
    const Slot slot = store.entrySlot(id);
    return slot != NoSlot && store.set(store.entry(slot).set).isEditable() ? slot : NoSlot;
}

/// Whether an entry may have this key: not empty, and no other entry of its set has it.
bool isKeyFree(Slot entry, const QString &key)
{
    const Store &store = openStore();
    const Slot holder = store.findKey(store.entry(entry).set, key);
    return !key.isEmpty() && (holder == NoSlot || holder == entry);
}

/// The value as the entry takes it. A text that was read as a number remembers it while it is one.
std::optional<EntryValue> acceptedValue(const EntryValue &present, const QVariant &value)
{
    std::optional<EntryValue> accepted = convertedValue(value, present.type());
    if (accepted && present.isNumberText()) {
        const QString text = accepted->toVariant().toString();
        if (isNumberLiteral(text)) {
            return EntryValue(EntryValue::NumberText{text});
        }
    }
    return accepted;
}

EntryValue retyped(const EntryValue &value, nkMetadataTypes::ValueType type)
{
    if (value.isTag() || type == nkMetadataTypes::Tag) {
        return defaultValue(type);
    }
    const std::optional<EntryValue> kept = convertedValue(value.toVariant(), type);
    return kept ? *kept : defaultValue(type);
}

/// Whether a value is another content: another value, another type, or a tag no more.
bool isOtherContent(const EntryValue &present, const EntryValue &value)
{
    return present != value || present.isTag() != value.isTag();
}

void changeContent(Slot entry, const EntryValue &value, const char *title)
{
    if (isOtherContent(openStore().entry(entry).value, value)) {
        Operation operation(title);
        operation.changeContent(entry, value);
    }
}

bool isKnownType(nkMetadataTypes::ValueType type)
{
    return int(type) >= int(nkMetadataTypes::String) && int(type) <= int(nkMetadataTypes::Tag);
}

} // namespace

QString defaultKey(nkMetadataTypes::ValueType type)
{
    return type == nkMetadataTypes::Tag ? QStringLiteral("Tag") : QStringLiteral("Key");
}

namespace EntryOperations {

quint64 create(quint64 setId, nkMetadataTypes::ValueType type)
{
    const SetRecord *set = openStore().findSet(setId);
    if (!set || !set->isEditable() || !isKnownType(type)) {
        return 0;
    }
    Operation operation(type == nkMetadataTypes::Tag ? QT_TRANSLATE_NOOP("Document", "Create Tag")
                                                     : QT_TRANSLATE_NOOP("Document", "Create Entry"));
    Store &store = operation.store();
    const Slot slot = store.setSlot(setId);
    const Slot entry = operation.addEntry(slot, store.uniqueKey(slot, defaultKey(type)), defaultValue(type));
    return store.idOf(entry);
}

void append(const QVector<Slot> &sets, const std::vector<EntryCopy> &copies, const char *title)
{
    Operation operation(title);
    Store &store = operation.store();
    for (const Slot set : sets) {
        if (!store.set(set).isEditable()) {
            continue;
        }
        for (const EntryCopy &copy : copies) {
            operation.addEntry(set, store.uniqueKey(set, copy.key), copy.value);
        }
    }
}

bool remove(quint64 setId, quint64 entryId)
{
    const Store &store = openStore();
    const Slot entry = store.entrySlot(entryId);
    if (entry == NoSlot || store.entry(entry).set != store.setSlot(setId)) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Remove Entry"));
    operation.toggle(ChangeKind::EntryDied, entry);
    return true;
}

void clear(quint64 setId)
{
    const SetRecord *set = openStore().findSet(setId);
    if (!set || set->entries.isEmpty()) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Remove All Entries"));
    const QVector<Slot> entries = set->entries.slots();
    for (const Slot entry : entries) {
        operation.toggle(ChangeKind::EntryDied, entry);
    }
}

void setKey(quint64 id, const QString &key)
{
    const Slot entry = editableEntry(id);
    if (entry == NoSlot || !isKeyFree(entry, key) || openStore().key(entry) == key) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Change Key"));
    operation.changeKey(entry, key);
}

void setValue(quint64 id, const QVariant &value)
{
    const Slot entry = editableEntry(id);
    if (entry == NoSlot || openStore().entry(entry).value.isTag()) {
        return;
    }
    const std::optional<EntryValue> accepted = acceptedValue(openStore().entry(entry).value, value);
    if (accepted) {
        changeContent(entry, *accepted, QT_TRANSLATE_NOOP("Document", "Change Value"));
    }
}

void setType(quint64 id, nkMetadataTypes::ValueType type)
{
    const Slot entry = editableEntry(id);
    if (entry == NoSlot || !isKnownType(type)) {
        return;
    }
    const EntryValue &present = openStore().entry(entry).value;
    const bool isSame = type == nkMetadataTypes::Tag ? present.isTag()
                                                     : !present.isTag() && present.type() == type;
    if (!isSame) {
        changeContent(entry, retyped(present, type), QT_TRANSLATE_NOOP("Document", "Change Type"));
    }
}

void makeTag(quint64 id, const QString &key)
{
    const Slot entry = editableEntry(id);
    if (entry == NoSlot || !isKeyFree(entry, key)) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Change Tag"));
    if (openStore().key(entry) != key) {
        operation.changeKey(entry, key);
    }
    if (!openStore().entry(entry).value.isTag()) {
        operation.changeContent(entry, EntryValue());
    }
}

void setTypedValue(quint64 id, EntryValue value)
{
    const Slot entry = editableEntry(id);
    if (entry != NoSlot) {
        changeContent(entry, value, QT_TRANSLATE_NOOP("Document", "Change Value"));
    }
}

void setValueOfKey(quint64 setId, const QString &key, const QVariant &value)
{
    const Store &store = openStore();
    const Slot set = store.setSlot(setId);
    if (set == NoSlot) {
        return;
    }
    const Slot present = store.findKey(set, key);
    if (present != NoSlot) {
        setValue(store.idOf(present), value);
        return;
    }
    const std::optional<EntryValue> fitting = bestFittingValue(value);
    if (fitting && !key.isEmpty() && store.set(set).isEditable()) {
        Operation operation(QT_TRANSLATE_NOOP("Document", "Create Entry"));
        operation.addEntry(set, key, *fitting);
    }
}

} // namespace EntryOperations
} // namespace kernel
