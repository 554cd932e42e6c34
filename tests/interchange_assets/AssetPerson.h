#pragma once

#include <QProcess>
#include <QString>

/// Somebody else at the same asset database: a process that does what it is told, one line at a time, and answers with
/// "done", or with what the store said.
class AssetPerson
{
public:
    /// Starts the process and waits until it listens; it has not touched the database yet.
    AssetPerson(const QString &program, const QString &place, const QString &name);
    ~AssetPerson();

    /// Tells it what to do, without waiting: "publish NAME", "checkout ID VERSION", "save ID VERSION" or
    /// "half ID", which begins to store a version and stops in the middle of it.
    void tell(const QString &line);
    QString answer();
    /// Ends it as a crash does.
    void kill();

private:
    QProcess m_process;
};
