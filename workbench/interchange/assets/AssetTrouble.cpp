#include "AssetTrouble.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlError>

using kernel::AssetResult;

namespace interchange {

namespace {

// Result codes of SQLite; the bits above the first eight tell the same more exactly.
enum SqliteCode {
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    IoError = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    NoDatabase = 26
};

/// What the driver says, in one line and without its own name.
QString reasonOf(const AssetAddress &address, const QSqlError &error)
{
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    QString line = address.withoutPassword(text).simplified();
    while (line.endsWith(QLatin1Char('.'))) {
        line.chop(1);
    }
    return line;
}

bool isAboutPassword(const QString &reason)
{
    return reason.contains(QLatin1String("no password supplied"))
           || reason.contains(QLatin1String("password authentication failed"));
}

/// Waiting for a lock came to its end, or the server gave a deadlock up.
bool isLock(const QSqlError &error)
{
    const QString state = error.nativeErrorCode();
    return state == QLatin1String("55P03") || state == QLatin1String("40P01")
           || state == QLatin1String("57014");
}

} // namespace

AssetResult AssetTrouble::told(const AssetAddress &address, const QSqlError &error, bool wasLost)
{
    const QString reason = reasonOf(address, error);
    if (!address.isServer()) {
        return AssetResult::failed(ofFile(address, error.nativeErrorCode().toInt() & 0xff, reason));
    }
    AssetResult result = AssetResult::failed(wasLost && error.type() != QSqlError::ConnectionError
                                                 ? tr("The connection to the asset database %1 was lost; the "
                                                      "scene is as it was, try again when the "
                                                      "server is back.")
                                                       .arg(address.place())
                                                 : ofServer(address, error, reason));
    result.wantsPassword = isAboutPassword(reason);
    return result;
}

QString AssetTrouble::ofFile(const AssetAddress &address, int code, const QString &reason)
{
    const QString path = address.place();
    switch (code) {
    case Busy:
    case Locked:
        return tr("The asset database “%1” is in use by another program; try again in a moment.").arg(path);
    case ReadOnly:
        return tr("The asset database “%1” may not be written to; change its permissions or those of its "
                  "folder.")
            .arg(path);
    case Full:
        return tr("There is no room left on the disk of the asset database “%1”; make room and try again.")
            .arg(path);
    case CannotOpen:
        return noFolder(address);
    case NoDatabase:
        return foreign(address);
    case Corrupt:
        return tr("The asset database “%1” is damaged; put a copy of it from a backup in its place.")
            .arg(path);
    case IoError:
        return tr("The disk of the asset database “%1” does not work as it should; check it and try again.")
            .arg(path);
    default:
        return tr("The asset database “%1” does not do what it is asked for (%2); try again.")
            .arg(path, reason);
    }
}

QString AssetTrouble::ofServer(const AssetAddress &address, const QSqlError &error, const QString &reason)
{
    const QString place = address.place();
    if (isAboutPassword(reason)) {
        return tr("The asset database %1 wants another password; enter the right one in the asset panel.")
            .arg(place);
    }
    if (isLock(error)) {
        return tr("Others keep the asset database %1 busy; try again in a moment.").arg(place);
    }
    if (error.type() == QSqlError::ConnectionError) {
        return tr("The asset database %1 is not to be reached (%2); check the network and the connection URL "
                  "in the "
                  "preferences.")
            .arg(place, reason);
    }
    return tr("The asset database %1 does not do what it is asked for (%2); ask whoever looks after it.")
        .arg(place, reason);
}

QString AssetTrouble::noFolder(const AssetAddress &address)
{
    return tr("The asset database “%1” cannot be opened; check that its folder is there and its permissions.")
        .arg(address.place());
}

QString AssetTrouble::noDriver(const AssetAddress &address)
{
    return tr("The asset database %1 cannot be opened, because Qt's driver for it is missing; install the "
              "package %2.")
        .arg(address.place(),
             address.isServer() ? QStringLiteral("libqt5sql5-psql") : QStringLiteral("libqt5sql5-sqlite"));
}

bool AssetTrouble::isForeignFile(const AssetAddress &address)
{
    QFile file(address.path());
    if (address.isServer() || !QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray start = QByteArrayLiteral("SQLite format 3\0");
    const QByteArray read = file.read(start.size());
    return !read.isEmpty() && read != start;
}

QString AssetTrouble::foreign(const AssetAddress &address)
{
    return address.isServer()
               ? tr("The database %1 holds something else than assets; name another one in the connection "
                    "URL.")
                     .arg(address.place())
               : tr("“%1” is no asset database; move it away, and a new one is made in its place.")
                     .arg(address.place());
}

QString AssetTrouble::newer(const AssetAddress &address, int schema, int known)
{
    return tr("The asset database %1 was made by a newer version of this program (layout %2, this one knows "
              "%3); "
              "update this program.")
        .arg(address.place(), QString::number(schema), QString::number(known));
}

} // namespace interchange
