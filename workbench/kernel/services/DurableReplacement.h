#pragma once

#include "OpenFile.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QString>

namespace kernel {

/// Puts a new file in the place of an old one so that readers find the old one or the new one, whole, whatever
/// happens: a temporary file in the same folder is written and synced, can be read back, and is renamed over
/// the old one; then the folder is synced.
///
/// A link is followed and stays a link. An existing file's permissions are kept, and its owner where the
/// system lets us; further hard links keep the old content. Each step answers false when it failed, error()
/// then says why; what follows must not be called. Without commit() the temporary file goes and the old file
/// stands untouched.
class NK_KERNEL_SERVICES_EXPORT DurableReplacement
{
    Q_DISABLE_COPY(DurableReplacement)
public:
    /// @param newFileMode permissions of a file that is not there yet, before the process's mask
    explicit DurableReplacement(const QString &path, uint newFileMode = 0666);
    ~DurableReplacement();

    /// Opens the temporary file.
    bool begin();
    bool write(const char *bytes, qint64 size);
    /// Syncs and closes what was written. Then it can be read back from temporaryPath().
    bool finishWriting();
    /// Renames and syncs the folder. False with isInPlace() true: the new file is there, but a power cut in the
    /// next seconds may bring back the old one.
    bool commit();

    bool isInPlace() const { return m_isInPlace; }
    QString temporaryPath() const { return m_temporary; }
    const QString &error() const { return m_error; }

private:
    bool createTemporary(uint mode);
    bool syncFolder();
    bool failWith(const QString &reason);

    QString m_target;
    QString m_temporary;
    uint m_mode;
    OpenFile m_file;
    QString m_error;
    bool m_isInPlace = false;
};

} // namespace kernel
