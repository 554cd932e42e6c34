#pragma once

#include "Clipboard.h"
#include "SlotList.h"

#include <nkKernelServices/nkMetadataTypes.h>

#include <QVariant>
#include <QVector>

namespace kernel {

/// The undoable changes of entries; what nkdMetadataSet, nkdMetadataEntry and nkdMetadataEntryList say about
/// them holds. Refused where the set is not editable, but for removing.
namespace EntryOperations {

/// @return the new entry's id; 0 where it was refused
quint64 create(quint64 setId, nkMetadataTypes::ValueType type);
/// Appends the copies to each set, the sets given once and alive; sets that are not editable are skipped.
/// @param title of the undo step
void append(const QVector<Slot> &sets, const std::vector<EntryCopy> &copies, const char *title);
bool remove(quint64 setId, quint64 entryId);
void clear(quint64 setId);

void setKey(quint64 id, const QString &key);
void setValue(quint64 id, const QVariant &value);
void setType(quint64 id, nkMetadataTypes::ValueType type);
void makeTag(quint64 id, const QString &key);
/// Retypes and sets the value: one change.
void setTypedValue(quint64 id, EntryValue value);
/// Sets the value of the entry with that key, or makes one.
void setValueOfKey(quint64 setId, const QString &key, const QVariant &value);

} // namespace EntryOperations

/// The base of the keys of new entries that nobody has named.
QString defaultKey(nkMetadataTypes::ValueType type);

} // namespace kernel
