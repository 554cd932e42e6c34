#include "interchange/assets/SqlAssetStore.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

// A person at an asset database, told what to do by lines of the standard input: see AssetPerson.

using interchange::AssetAddress;
using interchange::SqlAssetStore;
using kernel::AssetResult;

namespace {

/// Begins what storing a version does, in the store's own connection, and leaves it unfinished.
AssetResult beginToStore(const QString &id)
{
    QSqlQuery query(QSqlDatabase::database(QSqlDatabase::connectionNames().value(0)));
    const bool isBegun =
        query.exec(QStringLiteral("BEGIN"))
        && query.exec(QStringLiteral("UPDATE assets SET newest = 2, session = '' WHERE id = '%1'").arg(id))
        && query.exec(
            QStringLiteral("INSERT INTO asset_versions (asset, version, name, author, changed, content) "
                           "VALUES ('%1', 2, 'half', 'x', '', 'half')")
                .arg(id));
    return isBegun ? AssetResult() : AssetResult::failed(QStringLiteral("not begun"));
}

AssetResult obey(SqlAssetStore &store, const QStringList &words)
{
    const QString what = words.value(0);
    QString id = words.value(1);
    int version = words.value(2).toInt();
    if (what == QLatin1String("publish")) {
        return store.publish(words.value(1), "content", id);
    }
    if (what == QLatin1String("checkout")) {
        return store.checkOut(id, version);
    }
    if (what == QLatin1String("save")) {
        return store.save(id, QStringLiteral("Saved"), "saved", version);
    }
    const AssetResult result = store.checkOut(id, 1);
    return result.isDone() ? beginToStore(id) : result;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QString place = QCoreApplication::arguments().value(1);
    QString error;
    const AssetAddress address = place.startsWith(QLatin1Char('/')) ? AssetAddress::ofFile(place)
                                                                    : AssetAddress::ofUrl(place, &error);
    SqlAssetStore store(address, QCoreApplication::arguments().value(2), 20000);
    QTextStream in(stdin);
    QTextStream out(stdout);
    out << "ready" << Qt::endl;
    for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
        const AssetResult result = obey(store, line.split(QLatin1Char(' ')));
        out << (result.isDone() ? QStringLiteral("done") : result.error) << Qt::endl;
    }
    return 0;
}
