#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QByteArray>
#include <QString>

/// Writing that survives a crash or a power cut: readers find the old bytes or the new ones, never a mixture.
namespace kernel::DurableFile {

/// Replaces the file at path by bytes: a temporary file in the same folder, synced, renamed over the old one,
/// and the folder synced. A link is followed and stays a link; permissions of an existing file are kept, a
/// new one is the user's alone. On failure the old file stands as it was and the temporary file is gone.
/// @return the reason of the failure; empty on success
NK_KERNEL_SERVICES_EXPORT QString replace(const QString &path, const QByteArray &bytes);

} // namespace kernel::DurableFile
