#pragma once

#include <kernel/document/ValueConversion.h>

#include <QtGlobal>

namespace interchange {

/// What a file of metadata sets may be at most, read and written.
struct SetFileLimits
{
    /// Bytes of the file.
    qint64 bytes = qint64(1) << 30;
    /// Entries and tags of all sets together.
    qint64 entries = 4000000;
    /// JSON values: names, keys, values, list elements and the containers around them. Keeps a small file of
    /// tiny values from filling the memory.
    quint32 values = 64000000;
    /// Lists inside each other, as deep as an entry takes them; a list is depth 1.
    int listDepth = kernel::DeepestList;

    /// The JSON depth that goes with listDepth: file, sets, set, entries and entry stand around a list, and an
    /// element may be an object.
    int jsonDepth() const { return listDepth + 6; }
};

} // namespace interchange
