#include "SceneEditing.h"

#include "SceneListing.h"

#include "gui/dialogs/ValueText.h"
#include "kernel/document/Document.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkUndoString.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

using kernel::Document;

namespace SceneEditing {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SceneEditing", text);
}

Document &scene()
{
    return Document::the();
}

/// What one kind of object is called in names and undo steps.
struct Words
{
    const char *name;
    const char *create;
    const char *remove;
    const char *move;
};

Words wordsOf(nkObjectType type)
{
    switch (type) {
    case nkObjectType::Camera:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Camera"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Camera"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Cameras"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Cameras")};
    case nkObjectType::Light:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Light"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Light"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Lights"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Lights")};
    case nkObjectType::Sceneplate:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Sceneplate"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Sceneplate"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Sceneplates"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Sceneplates")};
    case nkObjectType::Material:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Material"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Material"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Materials"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Materials")};
    case nkObjectType::MaterialGroup:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Group"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Group"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Materials"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Materials")};
    default:
        return {QT_TRANSLATE_NOOP("SceneEditing", "New Group"),
                QT_TRANSLATE_NOOP("SceneEditing", "Create Group"),
                QT_TRANSLATE_NOOP("SceneEditing", "Delete Nodes"),
                QT_TRANSLATE_NOOP("SceneEditing", "Move Nodes")};
    }
}

bool isMaterialKind(nkObjectType type)
{
    return type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
}

/// The words for objects of several kinds: those of all, where all are of one.
Words wordsOf(const QList<quint64> &ids)
{
    const nkObjectType first = scene().typeOf(ids.value(0));
    const bool isOneKind = std::all_of(ids.cbegin(), ids.cend(),
                                       [first](quint64 id) { return scene().typeOf(id) == first; });
    if (isOneKind) {
        return wordsOf(first);
    }
    return wordsOf(isMaterialKind(first) ? nkObjectType::Material : nkObjectType::Node);
}

nkdSceneObject handle(quint64 id)
{
    return nkdSceneObject(nkdObject(id));
}

quint64 firstLocked(const QList<quint64> &ids)
{
    const auto locked = std::find_if(ids.cbegin(), ids.cend(),
                                     [](quint64 id) { return handle(id).getLocked(); });
    return locked == ids.cend() ? 0 : *locked;
}

/// The objects and everything below them.
QList<quint64> withAllBelow(QList<quint64> ids)
{
    for (int i = 0; i < ids.size(); ++i) {
        ids += scene().childrenOf(ids.at(i));
    }
    return ids;
}

Outcome fixedTree()
{
    return {{}, fixedTreeReason().replace(QLatin1Char('\n'), QLatin1Char(' '))};
}

} // namespace

QString fixedTreeReason()
{
    return scene().isTreeFixed()
               ? tr("Objects of a scene that is never written can only be renamed, locked and "
                    "given metadata.\nCreate, move and delete them in the program that writes "
                    "the file.")
               : QString();
}

Outcome refusalFor(quint64 lockedId)
{
    return {{}, tr("“%1” is locked; unlock it first.").arg(ValueText::oneLine(handle(lockedId).getName()))};
}

QList<quint64> topmost(const QList<quint64> &ids)
{
    QSet<quint64> wanted(ids.cbegin(), ids.cend());
    QList<quint64> found;
    // What is still to be visited, the next one last; ends as soon as all are found.
    QList<quint64> waiting = scene().topLevelNodes() + scene().topLevelMaterials();
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.isEmpty() && found.size() < wanted.size()) {
        const quint64 id = waiting.takeLast();
        if (wanted.contains(id)) {
            found.append(id);
            continue;
        }
        const QList<quint64> below = scene().childrenOf(id);
        std::reverse_copy(below.cbegin(), below.cend(), std::back_inserter(waiting));
    }
    return found;
}

Outcome create(nkObjectType type, quint64 near)
{
    if (scene().isTreeFixed()) {
        return fixedTree();
    }
    const Words words = wordsOf(type);
    const nkScopedMultiCommand command(nkUndoString(tr(words.create)), true);
    const bool isInside = type == nkObjectType::Material
                          && scene().typeOf(near) == nkObjectType::MaterialGroup;
    const quint64 id = scene().createObject(type, tr(words.name), isInside ? near : scene().parentOf(near));
    if (near != 0 && !isInside) {
        scene().moveObjects({id}, scene().parentOf(near), SceneListing::positionOf(near) + 1);
    }
    return {{id}, {}};
}

Outcome group(nkObjectType type, const QList<quint64> &ids)
{
    if (scene().isTreeFixed()) {
        return fixedTree();
    }
    const QList<quint64> members = topmost(ids);
    if (members.isEmpty()) {
        return {};
    }
    if (const quint64 locked = firstLocked(members)) {
        return refusalFor(locked);
    }
    const nkScopedMultiCommand command(nkUndoString(tr("Group Selected")), true);
    const quint64 parent = scene().parentOf(members.constFirst());
    const quint64 id = scene().createObject(type, tr(wordsOf(type).name), parent);
    scene().moveObjects({id}, parent, SceneListing::positionOf(members.constFirst()));
    scene().moveObjects(members, id);
    return {{id}, {}};
}

Outcome ungroup(const QList<quint64> &ids)
{
    if (scene().isTreeFixed()) {
        return fixedTree();
    }
    QList<quint64> groups = topmost(ids);
    const auto isNoGroup = [](quint64 id) { return scene().typeOf(id) != nkObjectType::MaterialGroup; };
    groups.erase(std::remove_if(groups.begin(), groups.end(), isNoGroup), groups.end());
    QList<quint64> members;
    for (const quint64 group : qAsConst(groups)) {
        members += scene().childrenOf(group);
    }
    if (const quint64 locked = firstLocked(groups + members)) {
        return refusalFor(locked);
    }
    const nkScopedMultiCommand command(nkUndoString(tr("Ungroup")), true);
    for (const quint64 group : qAsConst(groups)) {
        scene().moveObjects(scene().childrenOf(group), scene().parentOf(group),
                            SceneListing::positionOf(group));
    }
    scene().deleteObjects(groups);
    return {members, {}};
}

Outcome remove(const QList<quint64> &ids, bool *done)
{
    if (scene().isTreeFixed()) {
        return fixedTree();
    }
    if (const quint64 locked = firstLocked(withAllBelow(ids))) {
        return refusalFor(locked);
    }
    const nkScopedMultiCommand command(nkUndoString(tr(wordsOf(ids).remove)), true);
    const bool isDone = scene().deleteObjects(ids);
    if (done) {
        *done = isDone;
    }
    return {};
}

Outcome move(const QList<quint64> &ids, quint64 parentId, int position)
{
    if (scene().isTreeFixed()) {
        return fixedTree();
    }
    const QList<quint64> moved = topmost(ids);
    if (const quint64 locked = firstLocked(moved)) {
        return refusalFor(locked);
    }
    const nkScopedMultiCommand command(nkUndoString(tr(wordsOf(moved).move)), true);
    return {scene().moveObjects(moved, parentId, position) ? moved : QList<quint64>(), {}};
}

Outcome shift(const QList<quint64> &ids, int by)
{
    const QList<quint64> moved = topmost(ids);
    if (moved.isEmpty()) {
        return {};
    }
    const quint64 parent = scene().parentOf(moved.constFirst());
    const auto isElsewhere = [parent](quint64 id) { return scene().parentOf(id) != parent; };
    if (std::any_of(moved.cbegin(), moved.cend(), isElsewhere)) {
        return {{}, tr("Objects with different parents cannot be moved up or down together.")};
    }
    if (by < 0) {
        return move(moved, parent, std::max(0, SceneListing::positionOf(moved.constFirst()) - 1));
    }
    return move(moved, parent, SceneListing::positionOf(moved.constLast()) + 2);
}

void setLocked(const QList<quint64> &ids, bool locked)
{
    const nkScopedMultiCommand command(nkUndoString(locked ? tr("Lock Objects") : tr("Unlock Objects")),
                                       true);
    for (const quint64 id : ids) {
        handle(id).setLocked(locked);
    }
}

} // namespace SceneEditing
