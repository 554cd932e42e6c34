#include "ObjectOperations.h"

#include "Document.h"
#include "Operation.h"
#include "Store.h"

#include <QSet>

namespace kernel {

namespace {

bool isGraphKind(nkObjectType type)
{
    return type == nkObjectType::Node || type == nkObjectType::Camera || type == nkObjectType::Light
           || type == nkObjectType::Sceneplate;
}

bool isMaterialKind(nkObjectType type)
{
    return type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
}

/// The objects and everything below them, each once, parents before their children.
QVector<Slot> subtrees(const Store &store, const QList<quint64> &ids)
{
    QVector<Slot> found;
    QSet<Slot> known;
    const auto add = [&](Slot slot) {
        if (slot != NoSlot && !known.contains(slot)) {
            known.insert(slot);
            found.append(slot);
        }
    };
    for (const quint64 id : ids) {
        int next = found.size();
        add(store.objectSlot(id));
        for (; next < found.size(); ++next) {
            for (const Slot child : store.object(found.at(next)).children.slots()) {
                add(child);
            }
        }
    }
    return found;
}

/// Children before their parents, whatever was named first.
void sortForRemoval(QVector<Slot> &objects)
{
    // A parent is older than its children, so its slot is lower.
    std::sort(objects.begin(), objects.end(), std::greater<Slot>());
}

} // namespace

bool fitsBelow(const Store &store, nkObjectType type, quint64 parentId)
{
    if (!isGraphKind(type) && !isMaterialKind(type)) {
        return false;
    }
    if (parentId == 0) {
        return true;
    }
    const nkObjectType parent = store.typeOf(store.slotOf(parentId));
    return isGraphKind(type) ? isGraphKind(parent) : parent == nkObjectType::MaterialGroup;
}

namespace ObjectOperations {

quint64 create(nkObjectType type, const QString &name, quint64 parentId)
{
    if (!fitsBelow(Document::the().store(), type, parentId)) {
        return 0;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Create Object"));
    Store &store = operation.store();
    const Slot object = store.addObject(type, name, store.objectSlot(parentId));
    operation.toggle(ChangeKind::ObjectBorn, object);
    return store.idOf(object);
}

bool remove(const QList<quint64> &ids)
{
    QVector<Slot> objects = subtrees(Document::the().store(), ids);
    if (objects.isEmpty()) {
        return false;
    }
    sortForRemoval(objects);
    Operation operation(QT_TRANSLATE_NOOP("Document", "Delete Objects"));
    for (const Slot object : qAsConst(objects)) {
        const QVector<Slot> sets = operation.store().assignedSets(object);
        for (auto set = sets.crbegin(); set != sets.crend(); ++set) {
            operation.unlink(*set, object);
        }
        operation.toggle(ChangeKind::ObjectDied, object);
    }
    return true;
}

void rename(quint64 id, const QString &name)
{
    const ObjectRecord *object = Document::the().store().findObject(id);
    if (!object || object->locked || object->name == name) {
        return;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Rename Object"));
    operation.changeName(ChangeKind::ObjectName, operation.store().objectSlot(id), name);
}

void setLocked(quint64 id, bool locked)
{
    const ObjectRecord *object = Document::the().store().findObject(id);
    if (!object || object->locked == locked) {
        return;
    }
    Operation operation(locked ? QT_TRANSLATE_NOOP("Document", "Lock Object")
                               : QT_TRANSLATE_NOOP("Document", "Unlock Object"));
    operation.toggleLock(ChangeKind::ObjectLock, operation.store().objectSlot(id));
}

} // namespace ObjectOperations
} // namespace kernel
