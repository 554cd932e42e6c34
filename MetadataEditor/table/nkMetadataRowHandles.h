#pragma once

#include "table/nkMetadataKeyValueColumns.h"

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QModelIndex>

/// The handles behind a row of the key/value table, read through any chain of proxies.
namespace nkMetadataRowHandles {

/// The set of the row of index; null for an invalid index and where the row answers no set.
inline nkdMetadataSet set(const QModelIndex &index)
{
    using namespace nkMetadataKeyValue;
    return index.sibling(index.row(), AssignmentColumn).data(SetRole).value<nkdMetadataSet>();
}

/// The entry of the row of index; null for an invalid index and where the row answers no entry.
inline nkdMetadataEntry entry(const QModelIndex &index)
{
    using namespace nkMetadataKeyValue;
    return index.sibling(index.row(), AssignmentColumn).data(EntryRole).value<nkdMetadataEntry>();
}

} // namespace nkMetadataRowHandles
