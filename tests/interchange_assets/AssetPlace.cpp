#include "AssetPlace.h"

#include "interchange/assets/AssetConnection.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

using interchange::AssetAddress;
using interchange::SqlAssetStore;

namespace {

/// A connection for its lifetime that makes no tables.
class PlainConnection
{
public:
    explicit PlainConnection(const AssetAddress &address)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(
            address.isServer() ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"), m_name);
        database.setDatabaseName(address.isServer() ? address.database() : address.path());
        database.setHostName(address.host());
        database.setUserName(address.user());
        database.setPassword(address.password());
        if (!database.open()) {
            QTest::qFail(qPrintable(database.lastError().text()), __FILE__, __LINE__);
        }
        if (address.isServer()) {
            QSqlQuery(database).exec(QStringLiteral("SET client_min_messages = warning"));
        }
    }
    ~PlainConnection() { QSqlDatabase::removeDatabase(m_name); }

    QSqlQuery exec(const QString &statement) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name));
        if (!query.exec(statement)) {
            QTest::qFail(qPrintable(statement + query.lastError().text()), __FILE__, __LINE__);
        }
        return query;
    }

private:
    const QString m_name = QStringLiteral("plain");
};

} // namespace

AssetPlace::AssetPlace(bool onServer) : m_server(onServer ? std::make_unique<DatabaseServer>() : nullptr) {}

AssetPlace::~AssetPlace() = default;

QString AssetPlace::start()
{
    return m_server ? m_server->start() : QString();
}

void AssetPlace::clear()
{
    if (m_server) {
        run({QStringLiteral("DROP SCHEMA public CASCADE"), QStringLiteral("CREATE SCHEMA public")});
    } else {
        QFile::remove(address().path());
    }
}

AssetAddress AssetPlace::address() const
{
    QString error;
    return m_server ? AssetAddress::ofUrl(m_server->url(), &error)
                    : AssetAddress::ofFile(m_folder.filePath(QStringLiteral("assets.sqlite")));
}

QString AssetPlace::word() const
{
    return m_server ? m_server->url() : address().path();
}

std::unique_ptr<SqlAssetStore> AssetPlace::person(const char *name, int patience) const
{
    return std::make_unique<SqlAssetStore>(address(), QString::fromUtf8(name), patience);
}

void AssetPlace::run(const QStringList &statements) const
{
    const PlainConnection connection(address());
    for (const QString &statement : statements) {
        connection.exec(statement);
    }
}

QVariant AssetPlace::value(const QString &statement) const
{
    const PlainConnection connection(address());
    QSqlQuery query = connection.exec(statement);
    return query.next() ? query.value(0) : QVariant();
}
