#pragma once

#include <QDateTime>
#include <QString>

/// How the panel of assets writes what comes from the database.
namespace AssetText {

/// A foreign text in one line.
QString line(QString text);
/// A moment in local time, as short as the locale writes it.
QString moment(const QDateTime &moment);

} // namespace AssetText
