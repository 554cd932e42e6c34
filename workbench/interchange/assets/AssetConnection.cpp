#include "AssetConnection.h"

#include "AssetSchema.h"
#include "AssetTrouble.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QUuid>

using kernel::AssetResult;

namespace interchange {

namespace {

QString driverOf(const AssetAddress &address)
{
    return address.isServer() ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE");
}

} // namespace

AssetConnection::AssetConnection(const AssetAddress &address, int patience)
    : m_address(address),
      m_patience(patience),
      m_name(QStringLiteral("assets-%1").arg(QUuid::createUuid().toString(QUuid::WithoutBraces)))
{}

AssetConnection::~AssetConnection()
{
    close();
}

QSqlDatabase AssetConnection::database() const
{
    return QSqlDatabase::database(m_name, false);
}

QSqlQuery AssetConnection::query() const
{
    return QSqlQuery(database());
}

void AssetConnection::setPassword(const QString &password)
{
    m_address.setPassword(password);
    close();
}

void AssetConnection::close()
{
    m_isReady = false;
    if (QSqlDatabase::contains(m_name)) {
        database().close();
        QSqlDatabase::removeDatabase(m_name);
    }
}

AssetResult AssetConnection::reach()
{
    if (!QSqlDatabase::isDriverAvailable(driverOf(m_address))) {
        return AssetResult::failed(AssetTrouble::noDriver(m_address));
    }
    if (AssetTrouble::isForeignFile(m_address)) {
        return AssetResult::failed(AssetTrouble::foreign(m_address));
    }
    if (!connectNow()) {
        const AssetResult result = m_trouble;
        close();
        return result;
    }
    return {};
}

AssetResult AssetConnection::test(bool &isEmpty)
{
    isEmpty = true;
    if (!m_address.isServer() && !QFileInfo::exists(m_address.path())) {
        return checkFolder();
    }
    int layout = 0;
    AssetResult result = reach();
    if (result.isDone()) {
        result = AssetSchema(*this).look(layout);
    }
    isEmpty = layout == 0;
    close();
    return result;
}

/// SQLite would make the file only to see whether it can.
AssetResult AssetConnection::checkFolder() const
{
    const QFileInfo folder(QFileInfo(m_address.path()).absolutePath());
    return folder.isDir() && folder.isWritable() ? AssetResult()
                                                 : AssetResult::failed(AssetTrouble::noFolder(m_address));
}

AssetResult AssetConnection::open()
{
    if (m_isReady && !isAlive()) {
        close();
    }
    if (m_isReady) {
        return {};
    }
    const AssetResult reached = reach();
    if (!reached.isDone()) {
        return reached;
    }
    const AssetResult result = AssetSchema(*this).bringUpToDate();
    m_isReady = result.isDone();
    if (!m_isReady) {
        close();
    }
    return result;
}

/// A server is asked: a connection that broke looks well until it is used.
bool AssetConnection::isAlive()
{
    return m_address.isServer() ? run("SELECT 1") : QFileInfo::exists(m_address.path());
}

bool AssetConnection::connectNow()
{
    close();
    QSqlDatabase connection = QSqlDatabase::addDatabase(driverOf(m_address), m_name);
    describe(connection);
    if (!connection.open()) {
        note(connection.lastError());
        return false;
    }
    prepareSession();
    return true;
}

void AssetConnection::describe(QSqlDatabase &database) const
{
    if (!m_address.isServer()) {
        database.setDatabaseName(m_address.path());
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(m_patience));
        return;
    }
    database.setHostName(m_address.host());
    database.setPort(m_address.port());
    database.setDatabaseName(m_address.database());
    database.setUserName(m_address.user());
    database.setPassword(m_address.password());
    // The person waits for every answer: a server that is away has to be told within seconds.
    database.setConnectOptions(
        QStringLiteral("connect_timeout=4 tcp_user_timeout=8000 application_name=workbench")
        + m_address.options());
}

void AssetConnection::prepareSession()
{
    if (m_address.isServer()) {
        run("SET lock_timeout = ?", {m_patience});
        run("SET statement_timeout = ?", {m_patience + 10000});
    } else {
        run("PRAGMA foreign_keys = ON");
    }
}

bool AssetConnection::begin()
{
    return run(m_address.isServer() ? "BEGIN" : "BEGIN IMMEDIATE");
}

bool AssetConnection::commit()
{
    return run("COMMIT");
}

void AssetConnection::rollback()
{
    const AssetResult reason = m_trouble;
    const bool wasLost = m_wasLost;
    // Whatever is open there ends with the connection.
    m_isReady = !wasLost && run("ROLLBACK");
    m_trouble = reason;
    m_wasLost = wasLost;
}

bool AssetConnection::run(QSqlQuery &query, const char *sql, const QVariantList &values)
{
    // Qt warns of a question to a connection that it knows to be broken.
    const bool isDone = database().isOpen() && query.exec(filledIn(sql, values));
    if (!isDone) {
        note(query.lastError());
    }
    return isDone;
}

bool AssetConnection::run(const char *sql, const QVariantList &values, int *changed)
{
    QSqlQuery statement = query();
    const bool isDone = run(statement, sql, values);
    if (changed) {
        *changed = isDone ? statement.numRowsAffected() : 0;
    }
    return isDone;
}

/// The values as the driver writes them, quoted and escaped. Prepared statements would be the same with two warnings
/// more: Qt's driver for PostgreSQL fills values in, too, and complains at the end of every statement that it
/// cannot discard because the connection broke.
QString AssetConnection::filledIn(const char *sql, const QVariantList &values) const
{
    const QSqlDatabase connection = database();
    const QStringList parts = QString::fromLatin1(sql).split(QLatin1Char('?'));
    QString text = parts.constFirst();
    for (int i = 0; i < values.size() && i + 1 < parts.size(); ++i) {
        QSqlField field(QString(), values.at(i).type());
        // Without characters it is an empty text, never NULL.
        const bool isText = values.at(i).type() == QVariant::String;
        field.setValue(isText ? QVariant(QLatin1String("") + values.at(i).toString()) : values.at(i));
        text += connection.driver()->formatValue(field) + parts.at(i + 1);
    }
    return text;
}

AssetResult AssetConnection::trouble() const
{
    return m_trouble;
}

void AssetConnection::note(const QSqlError &error)
{
    // Whatever a server answers has a code: without one there was no answer.
    m_wasLost = m_address.isServer() && error.nativeErrorCode().isEmpty();
    m_trouble = AssetTrouble::told(m_address, error, m_wasLost);
}

} // namespace interchange
