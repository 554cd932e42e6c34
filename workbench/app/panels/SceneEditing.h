#pragma once

#include <nkKernelServices/nkObjectType.h>

#include <QList>
#include <QString>

/// What the editors' panels do with the open scene, each as one undo step with a title of its own. Objects are
/// ids; those that are gone count as not given.
namespace SceneEditing {

/// What an edit has done.
struct Outcome
{
    /// The objects that it has made or moved, to be selected; empty where nothing happened.
    QList<quint64> objects;
    /// Why nothing happened, in one sentence for a person; empty where something did, and where there was
    /// nothing to do.
    QString refusal;
};

/// A new object with a plain name, behind the object near and beside it, or in it where it is a material group
/// and the new object is none. @param near 0: at the end of the top level
Outcome create(nkObjectType type, quint64 near);
/// A new group in the place of the first of the objects, with all of them in it.
/// @param type Node, or MaterialGroup for materials and their groups
Outcome group(nkObjectType type, const QList<quint64> &ids);
/// Deletes material groups and puts what is in them in their places.
Outcome ungroup(const QList<quint64> &ids);
/// Deletes the objects with everything below them. Refused where any of that is locked. Names no objects.
/// @param done where not null: whether anything was deleted
Outcome remove(const QList<quint64> &ids, bool *done = nullptr);
/// See Document::moveObjects.
Outcome move(const QList<quint64> &ids, quint64 parentId, int position);
/// One place up (by -1) or down (by 1) among their siblings, kept side by side.
Outcome shift(const QList<quint64> &ids, int by);
void setLocked(const QList<quint64> &ids, bool locked);

/// Why objects can be neither made nor moved nor deleted in the open scene, in two lines of a sentence each; empty
/// where they can (see Document::isTreeFixed). All edits but locking are refused with it.
QString fixedTreeReason();
/// The outcome of an edit that a locked object stands against.
Outcome refusalFor(quint64 lockedId);
/// Those that have none of the others above them, in scene order.
QList<quint64> topmost(const QList<quint64> &ids);

} // namespace SceneEditing
