#pragma once

#include <QtCore/qnamespace.h>

/// The fixed columns of the key/value table and the item-data roles beside Qt::DisplayRole and Qt::UserRole
/// (the datum a cell edits). Shared by model, proxy, delegates, view and window.
namespace nkMetadataKeyValue {

enum Column : int {
    IconColumn = 0,
    AssignmentColumn = 1,
    KeyColumn = 2,
    ValueColumn = 3,
    TypeColumn = 4,
    ColumnCount = 5
};

enum Role : int {
    /// Of AssignmentColumn: the row's nkdMetadataSet.
    SetRole = Qt::UserRole + 6,
    /// Of AssignmentColumn: the row's nkdMetadataEntry.
    EntryRole = Qt::UserRole + 7,
    /// Of IconColumn: the QColor of the row's set.
    ColorRole = Qt::UserRole + 8
};

} // namespace nkMetadataKeyValue
