#pragma once

#include "kernel/document/EntryValue.h"
#include "kernel/document/SlotTable.h"

#include <QString>

#include <vector>

namespace kernel {

/// What a query looks at: the sets of a scene and their entries as they were at one moment. Made by
/// SnapshotCollector; never changed after, so any thread may read it.
struct QuerySnapshot
{
    struct Entry
    {
        EntryValue value;
        /// In keys.
        quint32 key = 0;
    };

    struct Set
    {
        quint64 id = 0;
        QString name;
        /// In entries: the first one, and the one behind the last.
        quint32 firstEntry = 0;
        quint32 endEntry = 0;
        /// In objectNames, likewise.
        quint32 firstObject = 0;
        quint32 endObject = 0;
    };

    /// In the order of answers: shared sets in order of creation, then the objects' own sets that have entries,
    /// in scene order of their objects (nodes, then materials).
    std::vector<Set> sets;
    SlotTable<Entry> entries;
    /// The texts of keys by number. Numbers that no entry has are empty.
    std::vector<QString> keys;
    /// The names of the objects that sets are assigned to or belong to; none where they were not asked for.
    std::vector<QString> objectNames;
    bool hasObjectNames = false;
};

} // namespace kernel
