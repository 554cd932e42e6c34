#pragma once

#include "Clipboard.h"
#include "Records.h"
#include "SlotList.h"

#include <QColor>
#include <QString>
#include <QVector>

namespace kernel {

/// The undoable changes of metadata sets and assignments; what nkMetadataService and nkdMetadataSet say about
/// them holds. Lists name living things, each once, and sets of lists are shared sets unless told otherwise.
namespace SetOperations {

/// @return the new set's id
quint64 create(const QString &name, const QVector<Slot> &objects);
void remove(const QVector<Slot> &sets);
/// Object sets, too.
QVector<Slot> duplicate(const QVector<Slot> &sets);
/// New sets like the given ones, with unique names, each assigned to the objects.
void paste(const std::vector<SetCopy> &copies, const QVector<Slot> &objects);
/// The same for sets that come from a file; they are locked where their copies are.
/// @return the new sets, in order
QVector<Slot> load(const std::vector<SetCopy> &copies, const QVector<Slot> &objects);
/// Gives a set the name, colour and entries of the copy: one change, or none where it has them. An object set
/// keeps its name, and a set whose copy has none keeps its own.
/// @return false where the set is not there or not editable
bool replaceContent(quint64 id, const SetCopy &copy);
/// Gives a set the content of a version of its asset, and that link: one change. Also where it is at rest.
/// @return false where it is not there, locked, or an object set
bool takeVersion(quint64 id, const SetCopy &copy, const AssetLink &link);
void assign(const QVector<Slot> &sets, const QVector<Slot> &objects);
void unassign(const QVector<Slot> &sets, const QVector<Slot> &objects);

void rename(quint64 id, const QString &name);
void setColor(quint64 id, const QColor &color);
void setLocked(quint64 id, bool locked);
/// A link that says None drops the rest of it.
bool setAsset(quint64 id, const AssetLink &link);

} // namespace SetOperations

/// The name of new sets that nobody has named.
QString defaultSetName();

} // namespace kernel
