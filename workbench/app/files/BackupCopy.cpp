#include "BackupCopy.h"

#include "kernel/services/DurableReplacement.h"

#include <QFile>

#include <sys/stat.h>

namespace BackupCopy {

namespace {

constexpr qint64 copiedAtOnce = 1 << 20;

/// Whoever may not read the file may not read its copy either.
uint permissionsOf(const QFile &file)
{
    struct stat present = {};
    return fstat(file.handle(), &present) == 0 ? present.st_mode & 0777U : 0600U;
}

bool copy(QFile &from, kernel::DurableReplacement &to)
{
    while (!from.atEnd()) {
        const QByteArray piece = from.read(copiedAtOnce);
        if (piece.isEmpty() || !to.write(piece.constData(), piece.size())) {
            return false;
        }
    }
    return from.error() == QFileDevice::NoError;
}

} // namespace

QString pathFor(const QString &path)
{
    return path + QLatin1Char('~');
}

QString make(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    kernel::DurableReplacement replacement(pathFor(path), permissionsOf(file));
    if (replacement.begin() && copy(file, replacement) && replacement.finishWriting()
        && replacement.commit()) {
        return QString();
    }
    return replacement.error().isEmpty() ? file.errorString() : replacement.error();
}

} // namespace BackupCopy
