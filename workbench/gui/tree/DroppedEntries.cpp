#include "DroppedEntries.h"

#include "gui/dialogs/ConflictDialog.h"

#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkMetadataEntryMime.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QCoreApplication>
#include <QMimeData>
#include <QTimer>

namespace DroppedEntries {
namespace {

nkUndoString undoTitle()
{
    return nkUndoString(QCoreApplication::translate("Metadata", "Copy Entries"),
                        QStringLiteral("Metadata Editor"), QString());
}

QList<nkdMetadataEntry> conflictsWith(const nkdMetadataSet &set, const QList<nkMetadataEntryMime> &records)
{
    const nkdMetadataEntryList entries = set.getEntries();
    QList<nkdMetadataEntry> conflicts;
    for (const nkMetadataEntryMime &record : records) {
        const nkdMetadataEntry present = entries.find(record.getKey());
        if (!present.isNull() && !conflicts.contains(present)) {
            conflicts.append(present);
        }
    }
    return conflicts;
}

// By value, not by handle: the dragged entry may have changed or died since, or live in another process.
void append(nkdMetadataSet set, const nkMetadataEntryMime &record)
{
    const QString key = set.getUniqueKey(record.getKey());
    nkdMetadataEntry entry = set.createEntry(record.isTag() ? nkMetadataTypes::Tag : record.getValueType());
    entry.setKey(key);
    if (!record.isTag()) {
        entry.setValue(record.getValue());
    }
}

void write(const nkdMetadataSet &set, const QList<nkMetadataEntryMime> &records,
           const QList<nkdMetadataEntry> &replaced)
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle());
    nkdMetadataEntryList entries = set.getEntries();
    for (const nkdMetadataEntry &entry : replaced) {
        entries.remove(entry);
    }
    for (const nkMetadataEntryMime &record : records) {
        append(set, record);
    }
}

QHash<QString, QVariant> valuesByKey(const QList<nkMetadataEntryMime> &records)
{
    QHash<QString, QVariant> values;
    for (const nkMetadataEntryMime &record : records) {
        values.insert(record.getKey(), record.isTag() ? QVariant() : record.getValue());
    }
    return values;
}

void askAndWrite(const nkdMetadataSet &set, const QList<nkMetadataEntryMime> &records)
{
    // Looked up anew: the scene may have moved on between drop and question.
    const QList<nkdMetadataEntry> conflicts = conflictsWith(set, records);
    nkMetadataGUIUtils::ConflictResult answer = nkMetadataGUIUtils::PasteAnyway;
    if (!conflicts.isEmpty()) {
        answer = ConflictDialog::ask({{set.getObjectId(), conflicts}}, valuesByKey(records));
    }
    if (answer != nkMetadataGUIUtils::Cancel && set.isEditable()) {
        write(set, records, answer == nkMetadataGUIUtils::Replace ? conflicts : QList<nkdMetadataEntry>());
    }
}

} // namespace

QList<nkMetadataEntryMime> fromMimeData(const QMimeData *data)
{
    QList<nkMetadataEntryMime> records;
    QDataStream stream(data ? data->data(mimeType()) : QByteArray());
    stream.setVersion(QDataStream::Qt_5_15);
    while (!stream.atEnd()) {
        nkMetadataEntryMime record;
        stream >> record;
        if (stream.status() != QDataStream::Ok) {
            return {};
        }
        if (record.isValid()) {
            records.append(record);
        }
    }
    return records;
}

void copyTo(const nkdMetadataSet &set, const QList<nkMetadataEntryMime> &records)
{
    if (records.isEmpty() || !set.isEditable()) {
        return;
    }
    if (conflictsWith(set, records).isEmpty()) {
        write(set, records, {});
        return;
    }
    QTimer::singleShot(0, &nkMetadataService::the(), [set, records] { askAndWrite(set, records); });
}

} // namespace DroppedEntries
