#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

namespace interchange {

/// Tells when one file has changed on disk: written, replaced by another one, removed or come back.
///
/// A burst of changes is told once, a moment after its end. What only touches the folder is not told.
class StringLibraryWatch : public QObject
{
    Q_OBJECT
public:
    explicit StringLibraryWatch(QObject *parent = nullptr);

    /// Watches this file from now on, in place of the former one, and takes it as it is now for known. It need
    /// not exist. An empty path watches nothing.
    void watch(const QString &path);

Q_SIGNALS:
    void changed();

private:
    void addPaths();
    void compare();

    QFileSystemWatcher m_watcher;
    QTimer m_pause;
    QString m_path;
    /// What tells one state of the file from another; empty where there is none.
    QString m_stamp;
};

} // namespace interchange
