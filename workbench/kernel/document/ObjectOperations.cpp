#include "ObjectOperations.h"

#include "Document.h"
#include "ObjectMove.h"
#include "Operation.h"
#include "Store.h"

#include <QSet>

#include <algorithm>

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

/// The youngest first: lists that were never reordered lose their ends, which costs least.
void sortForRemoval(QVector<Slot> &objects)
{
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

quint64 createSceneplate(const QString &name, const SceneplateRecord &content, quint64 parentId)
{
    if (!fitsBelow(Document::the().store(), nkObjectType::Sceneplate, parentId)) {
        return 0;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Create Sceneplate"));
    Store &store = operation.store();
    const Slot plate = store.addObject(nkObjectType::Sceneplate, name, store.objectSlot(parentId));
    SceneplateRecord present = content;
    store.swapSceneplate(plate, present);
    operation.toggle(ChangeKind::ObjectBorn, plate);
    return store.idOf(plate);
}

bool move(const QList<quint64> &ids, quint64 parentId, int position)
{
    const ObjectMove move(Document::the().store(), ids, parentId, position);
    if (!move.isChange()) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Move Objects"));
    for (const ObjectMove::Step &step : move.steps()) {
        operation.changePlace(step.object, step.place);
    }
    return true;
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

bool setSceneplate(quint64 id, const SceneplateRecord &content)
{
    const Store &store = Document::the().store();
    const ObjectRecord *object = store.findObject(id);
    if (!object || object->type != nkObjectType::Sceneplate || object->locked
        || store.sceneplate(store.objectSlot(id)) == content) {
        return false;
    }
    Operation operation(QT_TRANSLATE_NOOP("Document", "Change Sceneplate"));
    operation.changeSceneplate(store.objectSlot(id), content);
    return true;
}

} // namespace ObjectOperations
} // namespace kernel
