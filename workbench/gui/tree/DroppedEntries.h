#pragma once

#include <QLatin1String>
#include <QList>

class QMimeData;
class nkMetadataEntryMime;
class nkdMetadataSet;

/// Rows of the key/value table that were dropped on something.
namespace DroppedEntries {

/// The type under which the key/value table drags its rows.
constexpr QLatin1String mimeType()
{
    return QLatin1String("application/calyx-metadata-entry-item");
}

/// The records of a drag, in row order; empty for any other and for damaged data.
QList<nkMetadataEntryMime> fromMimeData(const QMimeData *data);

/// Appends what the records hold to the set, as one undo step. Where keys clash the user is asked first, but
/// not before control is back in the event loop: a dialog inside a running drag would keep its cursor and
/// swallow its end. Refused by a set that is not editable.
void copyTo(const nkdMetadataSet &set, const QList<nkMetadataEntryMime> &records);

} // namespace DroppedEntries
