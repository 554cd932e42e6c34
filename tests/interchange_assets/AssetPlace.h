#pragma once

#include "DatabaseServer.h"

#include "interchange/assets/AssetAddress.h"
#include "interchange/assets/SqlAssetStore.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// An asset database for one test function at a time, of the kind that the suite runs against.
class AssetPlace
{
public:
    /// @param onServer PostgreSQL, else a file
    explicit AssetPlace(bool onServer);
    ~AssetPlace();

    /// Makes it run. @return why it does not; empty where it does
    QString start();
    /// Throws everything in it away.
    void clear();

    bool isOnServer() const { return m_server != nullptr; }
    interchange::AssetAddress address() const;
    /// The same for a child process: a path or a URL.
    QString word() const;
    /// A new session of this person. @param patience in milliseconds
    std::unique_ptr<interchange::SqlAssetStore> person(
        const char *name, int patience = interchange::SqlAssetStore::UsualPatience) const;
    /// Runs statements past the store, one a text. Fails the test where one fails.
    void run(const QStringList &statements) const;
    /// The first value that a statement gives.
    QVariant value(const QString &statement) const;

private:
    std::unique_ptr<DatabaseServer> m_server;
    QTemporaryDir m_folder;
};
