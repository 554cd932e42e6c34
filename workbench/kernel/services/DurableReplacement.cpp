#include "DurableReplacement.h"

#include "FileCalls.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>

namespace kernel {

namespace {

/// Names tried for the temporary file; that so many are taken has never been seen.
constexpr int NameAttempts = 100;
constexpr uint PermissionBits = 07777;

/// The file that the path leads to, links followed, also where it is not there yet.
QString targetOf(const QString &path)
{
    const QFileInfo present(path);
    return present.exists() ? present.canonicalFilePath() : present.absoluteFilePath();
}

QString randomSuffix()
{
    return QString::number(QRandomGenerator::global()->generate(), 36);
}

} // namespace

DurableReplacement::DurableReplacement(const QString &path, uint newFileMode)
    : m_target(targetOf(path)), m_mode(newFileMode)
{}

DurableReplacement::~DurableReplacement()
{
    m_file.close();
    if (!m_temporary.isEmpty() && !m_isInPlace) {
        FileCalls::the().unlink(QFile::encodeName(m_temporary).constData());
    }
}

bool DurableReplacement::failWith(const QString &reason)
{
    m_error = reason;
    return false;
}

bool DurableReplacement::begin()
{
    struct stat present = {};
    const bool exists = FileCalls::the().stat(QFile::encodeName(m_target).constData(), &present) == 0;
    if (!exists && errno != ENOENT) {
        return failWith(OpenFile::systemError());
    }
    if (!createTemporary(exists ? 0600 : m_mode)) {
        return false;
    }
    if (exists) {
        // The owner first: giving a file away clears bits of its mode. That it cannot be given away is no
        // reason not to save.
        FileCalls::the().fchown(m_file.handle(), present.st_uid, present.st_gid);
        if (FileCalls::the().fchmod(m_file.handle(), present.st_mode & PermissionBits) != 0) {
            return failWith(OpenFile::systemError());
        }
    }
    return true;
}

bool DurableReplacement::createTemporary(uint mode)
{
    for (int attempt = 0; attempt < NameAttempts; ++attempt) {
        const QString name = m_target + QLatin1Char('.') + randomSuffix() + QStringLiteral(".tmp");
        if (m_file.open(name, O_WRONLY | O_CREAT | O_EXCL, mode)) {
            m_temporary = name;
            return true;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return failWith(m_file.error());
}

bool DurableReplacement::write(const char *bytes, qint64 size)
{
    return m_file.write(bytes, size) || failWith(m_file.error());
}

bool DurableReplacement::finishWriting()
{
    // A failed sync is not tried again: the system may have dropped what it could not write, and would then say
    // that all is well.
    return (m_file.sync() && m_file.close()) || failWith(m_file.error());
}

bool DurableReplacement::commit()
{
    if (FileCalls::the().rename(QFile::encodeName(m_temporary).constData(),
                                QFile::encodeName(m_target).constData())
        != 0) {
        return failWith(OpenFile::systemError());
    }
    m_isInPlace = true;
    return syncFolder();
}

/// Makes the rename itself durable. File systems that cannot sync a folder say EINVAL.
bool DurableReplacement::syncFolder()
{
    OpenFile folder;
    if (!folder.open(QFileInfo(m_target).absolutePath(), O_RDONLY | O_DIRECTORY)) {
        return failWith(folder.error());
    }
    if (!folder.sync() && errno != EINVAL) {
        return failWith(folder.error());
    }
    return true;
}

} // namespace kernel
