#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>

#include <QList>

/// Renames entries, asking first where their sets have the key already.
namespace KeyRename {

/// Gives all entries the key, as one undo step. Where other entries have it, the user is asked once whether
/// they are to be replaced; else nothing is renamed. Entries that cannot be renamed are left out. Two
/// entries of one set cannot have one key: then nothing is done.
/// @return whether something was renamed
bool rename(const QList<nkdMetadataEntry> &entries, const QString &key);

} // namespace KeyRename
