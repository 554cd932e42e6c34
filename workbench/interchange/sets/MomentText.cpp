#include <interchange/sets/MomentText.h>

#include <QTimeZone>

#include <cstdio>
#include <optional>

namespace interchange {

namespace {

constexpr int SecondsAnHour = 3600;
constexpr int SecondsAMinute = 60;
/// Offsets lie within a day's length of this many hours.
constexpr int LargestOffset = 18 * SecondsAnHour;

/// The digits at a place of a text as number; nothing where there are others. @param count how many, exactly
std::optional<int> digits(const QString &text, int at, int count)
{
    if (at + count > text.size())
        return std::nullopt;
    int number = 0;
    for (int i = at; i < at + count; ++i) {
        const int digit = text.at(i).unicode() - '0';
        if (digit < 0 || digit > 9)
            return std::nullopt;
        number = number * 10 + digit;
    }
    return number;
}

bool isAt(const QString &text, int at, char character)
{
    return at < text.size() && text.at(at) == QLatin1Char(character);
}

/// How the year 1 BC and those before it are counted: ISO has a year 0, QDate has none.
int isoYear(int year)
{
    return year < 0 ? year + 1 : year;
}

int qtYear(int year)
{
    return year <= 0 ? year - 1 : year;
}

QByteArray offsetText(int seconds)
{
    const int size = std::abs(seconds);
    char text[24];
    int length = std::snprintf(text, sizeof text, "%c%02d:%02d", seconds < 0 ? '-' : '+',
                               size / SecondsAnHour % 100, size / SecondsAMinute % 60);
    if (size % SecondsAMinute != 0)
        length += std::snprintf(text + length, sizeof text - size_t(length), ":%02d", size % SecondsAMinute);
    return QByteArray(text, length);
}

/// "+02:00" or "+02:00:30".
std::optional<int> toOffset(const QString &text)
{
    const bool hasSeconds = text.size() == 9;
    const std::optional<int> hours = digits(text, 1, 2);
    const std::optional<int> minutes = digits(text, 4, 2);
    const std::optional<int> seconds = hasSeconds ? digits(text, 7, 2) : std::optional<int>(0);
    if ((!hasSeconds && text.size() != 6) || !isAt(text, 3, ':') || (hasSeconds && !isAt(text, 6, ':'))
        || !hours || !minutes || !seconds || *minutes > 59 || *seconds > 59)
        return std::nullopt;
    const int size = *hours * SecondsAnHour + *minutes * SecondsAMinute + *seconds;
    if (size > LargestOffset)
        return std::nullopt;
    return isAt(text, 0, '-') ? -size : size;
}

/// A time of this place's clock. One that the clock leaves out in spring is moved on, as clocks are.
QDateTime localMoment(QDate date, QTime time)
{
    const QDateTime moment(date, time);
    return moment.isValid() ? moment : QDateTime::fromMSecsSinceEpoch(moment.toMSecsSinceEpoch());
}

/// @param suffix what stands behind the time
QDateTime moment(QDate date, QTime time, const QString &suffix)
{
    if (suffix.isEmpty())
        return localMoment(date, time);
    if (suffix == QLatin1String("Z"))
        return QDateTime(date, time, Qt::UTC);
    const int bracket = suffix.indexOf(QLatin1Char('['));
    const std::optional<int> offset = toOffset(suffix.left(bracket));
    if (!offset)
        return QDateTime();
    const QDateTime told(date, time, Qt::OffsetFromUTC, *offset);
    if (bracket < 0)
        return told;
    if (!suffix.endsWith(QLatin1Char(']')))
        return QDateTime();
    const QTimeZone zone(suffix.mid(bracket + 1, suffix.size() - bracket - 2).toUtf8());
    return zone.isValid() ? told.toTimeZone(zone) : QDateTime();
}

} // namespace

QByteArray MomentText::ofDate(QDate date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    year = isoYear(year);
    char text[32];
    const bool isPlain = year >= 1 && year <= 9999;
    const int length = std::snprintf(text, sizeof text, isPlain ? "%04d-%02d-%02d" : "%+07d-%02d-%02d", year,
                                     month, day);
    return QByteArray(text, length);
}

QByteArray MomentText::ofTime(QTime time)
{
    char text[40];
    int length = std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.hour(), time.minute(),
                               time.second());
    if (time.msec() != 0)
        length += std::snprintf(text + length, sizeof text - size_t(length), ".%03d", time.msec());
    return QByteArray(text, length);
}

QByteArray MomentText::ofDateTime(const QDateTime &dateTime)
{
    const QByteArray text = ofDate(dateTime.date()) + 'T' + ofTime(dateTime.time());
    switch (dateTime.timeSpec()) {
    case Qt::LocalTime:
        return text;
    case Qt::UTC:
        return text + 'Z';
    case Qt::OffsetFromUTC:
        return text + offsetText(dateTime.offsetFromUtc());
    case Qt::TimeZone:
        break;
    }
    return text + offsetText(dateTime.offsetFromUtc()) + '[' + dateTime.timeZone().id() + ']';
}

QDate MomentText::toDate(const QString &text)
{
    const bool isSigned = isAt(text, 0, '+') || isAt(text, 0, '-');
    const int yearEnd = text.size() - 6;
    const int first = isSigned ? 1 : 0;
    const int yearLength = yearEnd - first;
    if ((isSigned ? yearLength < 6 || yearLength > 9 : yearLength != 4) || !isAt(text, yearEnd, '-')
        || !isAt(text, yearEnd + 3, '-'))
        return QDate();
    const std::optional<int> year = digits(text, first, yearLength);
    const std::optional<int> month = digits(text, yearEnd + 1, 2);
    const std::optional<int> day = digits(text, yearEnd + 4, 2);
    if (!year || !month || !day || (!isSigned && *year == 0))
        return QDate();
    return QDate(qtYear(isAt(text, 0, '-') ? -*year : *year), *month, *day);
}

QTime MomentText::toTime(const QString &text)
{
    const bool hasMilliseconds = text.size() == 12 && isAt(text, 8, '.');
    const std::optional<int> hour = digits(text, 0, 2);
    const std::optional<int> minute = digits(text, 3, 2);
    const std::optional<int> second = digits(text, 6, 2);
    const std::optional<int> millisecond = hasMilliseconds ? digits(text, 9, 3) : std::optional<int>(0);
    if ((text.size() != 8 && !hasMilliseconds) || !isAt(text, 2, ':') || !isAt(text, 5, ':') || !hour
        || !minute || !second || !millisecond)
        return QTime();
    return QTime(*hour, *minute, *second, *millisecond);
}

QDateTime MomentText::toDateTime(const QString &text)
{
    const int middle = text.indexOf(QLatin1Char('T'));
    if (middle < 0)
        return QDateTime();
    const int timeLength = isAt(text, middle + 9, '.') ? 12 : 8;
    const QDate date = toDate(text.left(middle));
    const QTime time = toTime(text.mid(middle + 1, timeLength));
    if (!date.isValid() || !time.isValid())
        return QDateTime();
    return moment(date, time, text.mid(middle + 1 + timeLength));
}

} // namespace interchange
