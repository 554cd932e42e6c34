#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace interchange {

/// Dates and times as ISO 8601 text, exact both ways: milliseconds where there are any, years outside of 0001 to
/// 9999 with sign and at least six digits (0 is the year before 1), and after a date-time how it is told: nothing
/// for local time, "Z", "+02:00", or "+02:00[Europe/Berlin]" for a time zone.
///
/// Reading takes what writing gives and nothing else; it answers null values for other texts, for days that no
/// calendar has, and for time zones that this system does not know.
namespace MomentText {

QByteArray ofDate(QDate date);
QByteArray ofTime(QTime time);
QByteArray ofDateTime(const QDateTime &dateTime);

QDate toDate(const QString &text);
QTime toTime(const QString &text);
QDateTime toDateTime(const QString &text);

} // namespace MomentText

} // namespace interchange
