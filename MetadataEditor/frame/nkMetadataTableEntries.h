#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QList>
#include <QPair>

class QAbstractItemView;

/// What the editor window does with the entries that are selected in its table.
namespace nkMetadataTableEntries {

/// A row's set and entry; either may be null.
using Row = QPair<nkdMetadataSet, nkdMetadataEntry>;

/// The selected rows, from top to bottom, as handles: nothing of it changes with the view.
QList<Row> selectedRows(const QAbstractItemView *view);

/// Puts the entries of the rows into the host's entry clipboard; nothing where there are none.
void copy(const QList<Row> &rows);
/// Pastes the host's entry clipboard into the sets of the metadata selection, and into the own sets of its
/// objects, each once. Asks where keys clash; Cancel changes nothing. One undo step.
void paste();
/// Removes the entries of the rows from their sets, locked ones too: one undo step.
void remove(const QList<Row> &rows);

} // namespace nkMetadataTableEntries
