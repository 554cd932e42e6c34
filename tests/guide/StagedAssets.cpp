#include "StagedAssets.h"

#include "assets/AssetDatabase.h"

#include <interchange/assets/SqlAssetStore.h>
#include <kernel/services/AssetsService.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

using interchange::SqlAssetStore;

namespace {

const QString connectionName = QStringLiteral("guide");

/// The assets that sets of the sample scene are linked to.
const QStringList linkedNames{QStringLiteral("Sparrow E3 Data Sheet"), QStringLiteral("Paint Petrol Recipe")};
const QStringList linkedIds{QStringLiteral("sparrow-e3-data-sheet"), QStringLiteral("paint-petrol")};

void require(bool isDone, const QString &what)
{
    if (!isDone) {
        qFatal("The asset database of the guide cannot be made: %s", qPrintable(what));
    }
}

nkdMetadataSet setOf(const QString &name)
{
    nkdMetadataSet found;
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    for (const nkdMetadataSet &set : sets) {
        found = set.getName() == name ? set : found;
    }
    require(!found.isNull(), name);
    return found;
}

void change(const char *sql, const QVariantList &values)
{
    QSqlQuery query(QSqlDatabase::database(connectionName));
    query.prepare(QLatin1String(sql));
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    require(query.exec(), query.lastError().text());
}

/// What the database itself decides, and differently each time: identities, moments and places.
void settle()
{
    for (int i = 0; i < linkedNames.size(); ++i) {
        const QVariantList values{linkedIds.at(i), linkedNames.at(i)};
        change("UPDATE asset_versions SET asset = ? WHERE name = ?", values);
        change("UPDATE assets SET id = ? WHERE name = ?", values);
    }
    change("UPDATE asset_versions SET changed = '2024-03-18T10:00:00.000Z' WHERE version = 1", {});
    change("UPDATE asset_versions SET changed = '2024-05-02T14:30:00.000Z' WHERE version = 2", {});
    // A person's name comes with that of the computer.
    change("UPDATE asset_versions SET author = 'Ada' WHERE version = 1", {});
    change("UPDATE asset_versions SET author = 'Ben' WHERE version = 2", {});
}

} // namespace

void StagedAssets::publish()
{
    auto &service = kernel::ServiceRegistry::the().service<kernel::AssetsService>();
    const nkdMetadataSet part = setOf(QStringLiteral("Wearing Part"));
    const nkdMetadataSet furniture = setOf(QStringLiteral("Furniture"));
    const nkdMetadataSet release = setOf(QStringLiteral("Release 2024"));
    service.publishSets({part, furniture, release});
    service.modifyAssets({part, furniture});
    part.getEntries().find(QStringLiteral("interval")).setValue(18);
    service.saveAssets({part});

    const interchange::AssetAddress address = AssetDatabase::ownAddress();
    SqlAssetStore ben(address, QStringLiteral("Ben"));
    QString id;
    for (const QString &name : linkedNames) {
        require(ben.publish(name, "{}", id).isDone(), name);
    }
    QVector<kernel::AssetInfo> assets;
    require(ben.list(release.getName(), 1, assets).isDone() && assets.size() == 1, release.getName());
    require(ben.checkOut(assets.constFirst().id, 1).isDone(), release.getName());
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        database.setDatabaseName(address.path());
        require(database.open(), database.lastError().text());
        settle();
    }
    QSqlDatabase::removeDatabase(connectionName);
}
