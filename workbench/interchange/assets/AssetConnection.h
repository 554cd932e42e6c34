#pragma once

#include "AssetAddress.h"

#include "kernel/services/AssetStore.h"

#include <QCoreApplication>
#include <QString>
#include <QVariant>

class QSqlDatabase;
class QSqlError;
class QSqlQuery;

namespace interchange {

/// The one connection to an asset database: opened when it is first needed, again after it was lost, closed at the
/// end. SQLite and PostgreSQL get the same SQL; what differs between them stands here and in the schema's lock.
class AssetConnection
{
    Q_DECLARE_TR_FUNCTIONS(AssetConnection)
    Q_DISABLE_COPY(AssetConnection)

public:
    /// @param patience how long a lock of somebody else is waited for, in milliseconds
    AssetConnection(const AssetAddress &address, int patience);
    ~AssetConnection();

    const AssetAddress &address() const { return m_address; }
    /// For the next time that it is opened.
    void setPassword(const QString &password);

    /// Makes sure that the database answers and has the schema of this program. A connection that was lost since
    /// the last time is made anew.
    kernel::AssetResult open();
    /// Connects, looks whether the database is one that this program can work with, and closes again. Nothing is
    /// changed: no table is made and no file. A file that is not there is well where it can be made.
    /// @param isEmpty receives whether no asset was ever kept there
    kernel::AssetResult test(bool &isEmpty);
    void close();

    /// A transaction in which nobody else writes until it ends.
    bool begin();
    bool commit();
    /// Takes everything since begin() back, as far as the database still answers.
    void rollback();

    /// Runs one statement; every ? stands for one of the values, in order.
    bool run(QSqlQuery &query, const char *sql, const QVariantList &values = {});
    /// The same where the rows of the answer do not matter. @param changed receives how many rows it changed
    bool run(const char *sql, const QVariantList &values = {}, int *changed = nullptr);
    QSqlQuery query() const;
    QSqlDatabase database() const;

    /// What the last thing that failed is told as.
    kernel::AssetResult trouble() const;
    /// Whether the answer to the last thing that failed never came: it may have been done or not.
    bool wasLost() const { return m_wasLost; }

private:
    kernel::AssetResult checkFolder() const;
    kernel::AssetResult reach();
    bool connectNow();
    bool isAlive();
    void describe(QSqlDatabase &database) const;
    void prepareSession();
    QString filledIn(const char *sql, const QVariantList &values) const;
    void note(const QSqlError &error);

    AssetAddress m_address;
    const int m_patience;
    const QString m_name;
    kernel::AssetResult m_trouble;
    bool m_wasLost = false;
    bool m_isReady = false;
};

} // namespace interchange
