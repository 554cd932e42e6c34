#include "SetOperations.h"

#include "Document.h"
#include "Operation.h"
#include "Store.h"

#include <algorithm>

namespace kernel {

namespace {

/// A new set with a unique name.
Slot addSet(Operation &operation, const QString &name, const QColor &color = QColor())
{
    Store &store = operation.store();
    const Slot set = store.addSet(store.uniqueSetName(name.isEmpty() ? defaultSetName() : name), color);
    operation.toggle(ChangeKind::SetBorn, set);
    return set;
}

Slot addCopy(Operation &operation, const SetCopy &copy)
{
    const Slot set = addSet(operation, copy.name, copy.color);
    for (const EntryCopy &entry : copy.entries) {
        operation.addEntry(set, entry.key, entry.value);
    }
    return set;
}

/// The sets of the copies, each assigned to the objects.
QVector<Slot> addCopies(Operation &operation, const std::vector<SetCopy> &copies,
                        const QVector<Slot> &objects)
{
    QVector<Slot> sets;
    sets.reserve(int(copies.size()));
    for (const SetCopy &copy : copies) {
        sets.append(addCopy(operation, copy));
    }
    for (const Slot object : objects) {
        for (const Slot set : qAsConst(sets)) {
            operation.link(set, object);
        }
    }
    return sets;
}

bool hasEntries(const Store &store, Slot set, const std::vector<EntryCopy> &copies)
{
    const QVector<Slot> &entries = store.set(set).entries.slots();
    const auto isSame = [&store](Slot entry, const EntryCopy &copy) {
        const EntryValue &value = store.entry(entry).value;
        return store.key(entry) == copy.key && value == copy.value && value.isTag() == copy.value.isTag();
    };
    return std::equal(entries.begin(), entries.end(), copies.begin(), copies.end(), isSame);
}

void replaceEntries(Operation &operation, Slot set, const std::vector<EntryCopy> &copies)
{
    const QVector<Slot> present = operation.store().set(set).entries.slots();
    for (const Slot entry : present) {
        operation.toggle(ChangeKind::EntryDied, entry);
    }
    for (const EntryCopy &copy : copies) {
        operation.addEntry(set, copy.key, copy.value);
    }
}

/// The name that a set gets when it is to be called like its copy.
QString nameAfter(const Store &store, Slot set, const SetCopy &copy)
{
    const bool keepsName = copy.name.isEmpty() || store.set(set).owner != NoSlot;
    return keepsName ? store.set(set).name : store.uniqueSetName(copy.name, set);
}

/// Changes what differs from the copy, and nothing else.
void makeLike(Operation &operation, Slot set, const SetCopy &copy)
{
    const Store &store = operation.store();
    const QString name = nameAfter(store, set, copy);
    if (name != store.set(set).name) {
        operation.changeName(ChangeKind::SetName, set, name);
    }
    if (copy.color.isValid() && copy.color != store.set(set).color) {
        operation.changeColor(set, copy.color);
    }
    if (!hasEntries(store, set, copy.entries)) {
        replaceEntries(operation, set, copy.entries);
    }
}

void link(Operation &operation, const QVector<Slot> &sets, const QVector<Slot> &objects)
{
    for (const Slot object : objects) {
        for (const Slot set : sets) {
            operation.link(set, object);
        }
    }
}

} // namespace

QString defaultSetName()
{
    return QStringLiteral("MetadataSet");
}

namespace SetOperations {

quint64 create(const QString &name, const QVector<Slot> &objects)
{
    Operation operation(QT_TRANSLATE_NOOP("Document", "Create Metadata Set"));
    const Slot set = addSet(operation, name);
    link(operation, {set}, objects);
    return operation.store().idOf(set);
}

void remove(const QVector<Slot> &sets)
{
    if (sets.isEmpty()) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Delete Metadata Sets"));
    for (const Slot set : sets) {
        const QVector<Slot> objects = operation.store().linkedObjects(set);
        for (const Slot object : objects) {
            operation.unlink(set, object);
        }
        operation.toggle(ChangeKind::SetDied, set);
    }
}

QVector<Slot> duplicate(const QVector<Slot> &sets)
{
    QVector<Slot> duplicates;
    if (sets.isEmpty()) {
        return duplicates;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Duplicate Metadata Sets"));
    for (const Slot set : sets) {
        const Slot added = addCopy(operation, copyOfSet(operation.store(), set));
        link(operation, {added}, operation.store().linkedObjects(set));
        duplicates.append(added);
    }
    return duplicates;
}

void paste(const std::vector<SetCopy> &copies, const QVector<Slot> &objects)
{
    if (copies.empty()) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Paste Metadata Sets"));
    addCopies(operation, copies, objects);
}

QVector<Slot> load(const std::vector<SetCopy> &copies, const QVector<Slot> &objects)
{
    if (copies.empty()) {
        return {};
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Load Metadata Sets"));
    const QVector<Slot> sets = addCopies(operation, copies, objects);
    for (size_t index = 0; index < copies.size(); ++index) {
        if (copies[index].locked) {
            operation.toggleLock(ChangeKind::SetLock, sets.at(int(index)));
        }
    }
    return sets;
}

bool replaceContent(quint64 id, const SetCopy &copy)
{
    const Store &store = Document::the().store();
    const Slot set = store.setSlot(id);
    if (set == NoSlot || !store.set(set).isEditable()) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Replace Metadata Set"));
    makeLike(operation, set, copy);
    return true;
}

bool takeVersion(quint64 id, const SetCopy &copy, const AssetLink &link)
{
    const Store &store = Document::the().store();
    const Slot set = store.setSlot(id);
    if (set == NoSlot || store.set(set).locked || store.set(set).owner != NoSlot) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Reload from Asset Manager"));
    makeLike(operation, set, copy);
    if (!(store.set(set).asset == link)) {
        operation.changeAsset(set, link);
    }
    return true;
}

void assign(const QVector<Slot> &sets, const QVector<Slot> &objects)
{
    Operation operation(QT_TRANSLATE_NOOP("Document", "Assign Metadata Sets"));
    link(operation, sets, objects);
}

void unassign(const QVector<Slot> &sets, const QVector<Slot> &objects)
{
    Operation operation(QT_TRANSLATE_NOOP("Document", "Remove Assignments"));
    for (const Slot object : objects) {
        for (const Slot set : sets) {
            operation.unlink(set, object);
        }
    }
}

void rename(quint64 id, const QString &name)
{
    const Store &store = Document::the().store();
    const Slot slot = store.setSlot(id);
    if (slot == NoSlot || name.isEmpty() || store.set(slot).owner != NoSlot
        || !store.set(slot).isEditable()) {
        return;
    }
    const QString unique = store.uniqueSetName(name, slot);
    if (unique != store.set(slot).name) {
        Operation operation(QT_TRANSLATE_NOOP("Document", "Rename Metadata Set"));
        operation.changeName(ChangeKind::SetName, slot, unique);
    }
}

void setColor(quint64 id, const QColor &color)
{
    const Store &store = Document::the().store();
    const SetRecord *set = store.findSet(id);
    if (!set || !color.isValid() || !set->isEditable() || set->color == color) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Change Set Color"));
    operation.changeColor(store.setSlot(id), color);
}

void setLocked(quint64 id, bool locked)
{
    const Store &store = Document::the().store();
    const SetRecord *set = store.findSet(id);
    if (!set || set->locked == locked) {
        return;
    }
    Operation operation(locked ? QT_TRANSLATE_NOOP("Document", "Lock Metadata Set")
                               : QT_TRANSLATE_NOOP("Document", "Unlock Metadata Set"));
    operation.toggleLock(ChangeKind::SetLock, store.setSlot(id));
}

bool setAsset(quint64 id, const AssetLink &link)
{
    const Store &store = Document::the().store();
    const SetRecord *set = store.findSet(id);
    const AssetLink asset = link.state == AssetState::None ? AssetLink() : link;
    if (!set || set->owner != NoSlot || set->asset == asset) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Change Asset Link"));
    operation.changeAsset(store.setSlot(id), asset);
    return true;
}

} // namespace SetOperations
} // namespace kernel
