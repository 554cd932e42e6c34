#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A PostgreSQL of the test's own: a new cluster in a temporary folder that answers on a local socket alone. Ends with
/// the object, and with the test process whatever becomes of that. Started by root it runs as the system's
/// database user, for it refuses to run as root.
class DatabaseServer
{
public:
    /// @param password empty: everybody who reaches the socket may come in
    explicit DatabaseServer(const QString &password = QString());
    ~DatabaseServer();

    /// Waits until it takes connections.
    /// @return why it does not run; empty where it does
    QString start();
    /// Ends it without saying good-bye to anybody.
    void kill();

    /// How the workbench is told of it, with the password.
    QString url() const;

private:
    QString prepare();
    QString makeCluster();
    static QString programFolder();
    QStringList asItsUser(const QStringList &words) const;

    QTemporaryDir m_folder{QStringLiteral("/tmp/nkpg-XXXXXX")};
    const QString m_password;
    bool m_isMade = false;
    QProcess m_process;
};
