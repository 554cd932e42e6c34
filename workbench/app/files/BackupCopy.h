#pragma once

#include <QString>

/// The copy of a file as it was before it is overwritten.
namespace BackupCopy {

/// The name of the copy of a file: NAME~ beside it.
QString pathFor(const QString &path);
/// Copies the file, durably: an older copy stays whole until the new one is on the disk.
/// @return the reason of the failure; empty on success
QString make(const QString &path);

} // namespace BackupCopy
