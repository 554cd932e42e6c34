#include "DurableFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace kernel {

namespace {

QString systemError()
{
    return qt_error_string(errno);
}

QString writeAll(QTemporaryFile &file, const QByteArray &bytes)
{
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush()) {
        return file.errorString();
    }
    // Not QSaveFile: its commit says true also when the sync failed.
    return ::fsync(file.handle()) == 0 ? QString() : systemError();
}

/// Makes the rename itself durable. File systems that cannot sync a folder say EINVAL.
QString syncFolder(const QString &folder)
{
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return systemError();
    }
    QString error;
    if (::fsync(handle) != 0 && errno != EINVAL) {
        error = systemError();
    }
    ::close(handle);
    return error;
}

} // namespace

QString DurableFile::replace(const QString &path, const QByteArray &bytes)
{
    const QFileInfo present(path);
    const QString target = present.exists() ? present.canonicalFilePath() : present.absoluteFilePath();
    const QString folder = QFileInfo(target).absolutePath();
    if (!QDir().mkpath(folder)) {
        return QStringLiteral("The folder \"%1\" cannot be made").arg(folder);
    }
    QTemporaryFile temporary(target + QStringLiteral(".XXXXXX"));
    const QString error = writeAll(temporary, bytes);
    if (!error.isEmpty()) {
        return error;
    }
    if (present.exists()) {
        temporary.setPermissions(present.permissions());
    }
    if (::rename(QFile::encodeName(temporary.fileName()).constData(), QFile::encodeName(target).constData())
        != 0) {
        return systemError();
    }
    temporary.setAutoRemove(false);
    return syncFolder(folder);
}

} // namespace kernel
