#pragma once

#include "AssetAddress.h"

#include "kernel/services/AssetStore.h"

#include <QCoreApplication>
#include <QString>

class QSqlError;

namespace interchange {

/// The words for what goes wrong with an asset database, each one sentence that says what, where and what to do.
/// No password stands in any of them.
class AssetTrouble
{
    Q_DECLARE_TR_FUNCTIONS(AssetTrouble)

public:
    /// @param wasLost the connection broke
    static kernel::AssetResult told(const AssetAddress &address, const QSqlError &error, bool wasLost);

    static QString noDriver(const AssetAddress &address);
    /// Whether the file of the address does not begin as a database does. SQLite itself would take a very short one
    /// for an empty database and write over it.
    static bool isForeignFile(const AssetAddress &address);
    /// The file cannot be where it is to be.
    static QString noFolder(const AssetAddress &address);
    /// The file holds something else.
    static QString foreign(const AssetAddress &address);
    /// A newer program has changed the schema. @param schema that of the database
    static QString newer(const AssetAddress &address, int schema, int known);

private:
    static QString ofFile(const AssetAddress &address, int code, const QString &reason);
    static QString ofServer(const AssetAddress &address, const QSqlError &error, const QString &reason);
};

} // namespace interchange
