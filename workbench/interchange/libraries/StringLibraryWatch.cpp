#include "StringLibraryWatch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace interchange {

namespace {

/// Programs that save in several steps are done within this time.
constexpr int pauseMilliseconds = 100;

QString stampOf(const QString &path)
{
    struct stat state;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &state) != 0) {
        return QString();
    }
    // The inode, because a replaced file may have size and time of the old one.
    return QStringLiteral("%1 %2 %3.%4")
        .arg(state.st_ino)
        .arg(state.st_size)
        .arg(state.st_mtim.tv_sec)
        .arg(state.st_mtim.tv_nsec);
}

} // namespace

StringLibraryWatch::StringLibraryWatch(QObject *parent) : QObject(parent)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMilliseconds);
    connect(&m_pause, &QTimer::timeout, this, &StringLibraryWatch::compare);
    const auto wait = [this] { m_pause.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, wait);
}

void StringLibraryWatch::watch(const QString &path)
{
    const QStringList former = m_watcher.files() + m_watcher.directories();
    if (!former.isEmpty()) {
        m_watcher.removePaths(former);
    }
    m_pause.stop();
    m_path = path;
    m_stamp = stampOf(path);
    addPaths();
}

void StringLibraryWatch::addPaths()
{
    // The file, for what is written into it; its folder, for what takes its place: the watcher goes blind
    // for a file that was replaced.
    const QFileInfo file(m_path);
    if (m_path.isEmpty()) {
        return;
    }
    if (file.exists()) {
        m_watcher.addPath(m_path);
    }
    if (file.dir().exists()) {
        m_watcher.addPath(file.path());
    }
}

void StringLibraryWatch::compare()
{
    addPaths();
    const QString stamp = stampOf(m_path);
    if (stamp != m_stamp) {
        m_stamp = stamp;
        Q_EMIT changed();
    }
}

} // namespace interchange
