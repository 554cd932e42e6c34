#include "ValueConversion.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {

namespace {

using Converted = std::optional<EntryValue>;

const QString ListSeparator = QStringLiteral(", ");

QString numberText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString timeText(QTime time)
{
    return time.toString(time.msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

QString dateTimeText(const QDateTime &dateTime)
{
    return dateTime.toString(dateTime.time().msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
}

bool isText(const QVariant &value)
{
    return value.userType() == QMetaType::QString || value.userType() == QMetaType::QByteArray
           || value.userType() == QMetaType::QChar;
}

/// Whether a list holds nothing but what entries hold, no deeper than they take it. Gaps (invalid values) are
/// fine: files have them.
bool isStorableList(const QVariantList &list, int depth = 1)
{
    const auto isStorable = [depth](const QVariant &element) {
        return element.userType() == QMetaType::QVariantList
                   ? isStorableList(element.toList(), depth + 1)
                   : !element.isValid() || element.canConvert<QString>();
    };
    return depth <= DeepestList && std::all_of(list.cbegin(), list.cend(), isStorable);
}

/// The number a value stands for; nothing for what is no number.
std::optional<double> number(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString text = value.toString().trimmed();
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
            return 1.0;
        }
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
            return 0.0;
        }
        bool ok = false;
        const double result = QLocale::c().toDouble(text, &ok);
        return ok ? std::optional<double>(result) : std::nullopt;
    }
    case QMetaType::QTime:
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return std::nullopt;
    default: {
        bool ok = false;
        const double result = value.toDouble(&ok);
        return ok ? std::optional<double>(result) : std::nullopt;
    }
    }
}

Converted toText(const QVariant &value)
{
    if (isText(value)) {
        return EntryValue(value.toString());
    }
    if (!isList(value) && !value.canConvert<QString>()) {
        return std::nullopt;
    }
    return EntryValue(valueText(value));
}

Converted toInteger(const QVariant &value)
{
    const std::optional<double> exact = number(value);
    // Doubles hold every 32-bit integer, so going through one loses nothing.
    if (!exact || !(std::round(*exact) >= std::numeric_limits<int>::min())
        || !(std::round(*exact) <= std::numeric_limits<int>::max())) {
        return std::nullopt;
    }
    return EntryValue(int(std::round(*exact)));
}

Converted toFloat(const QVariant &value)
{
    const std::optional<double> result = number(value);
    return result ? Converted(EntryValue(*result)) : std::nullopt;
}

Converted toBoolean(const QVariant &value)
{
    const std::optional<double> result = number(value);
    return result && !std::isnan(*result) ? Converted(EntryValue(*result != 0.0)) : std::nullopt;
}

/// A moment read from ISO text. A date alone is midnight.
QDateTime moment(const QVariant &value)
{
    const QString text = value.toString().trimmed();
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

Converted toTime(const QVariant &value)
{
    QTime time;
    if (value.userType() == QMetaType::QTime) {
        time = value.toTime();
    } else if (value.userType() == QMetaType::QDateTime) {
        time = value.toDateTime().time();
    } else if (isText(value)) {
        const QString text = value.toString().trimmed();
        time = QTime::fromString(text, Qt::ISODateWithMs);
        if (!time.isValid() && text.contains(QLatin1Char('T'))) {
            time = moment(value).time();
        }
    }
    return time.isValid() ? Converted(EntryValue(time)) : std::nullopt;
}

Converted toDate(const QVariant &value)
{
    QDate date;
    if (value.userType() == QMetaType::QDate) {
        date = value.toDate();
    } else if (value.userType() == QMetaType::QDateTime) {
        date = value.toDateTime().date();
    } else if (isText(value)) {
        date = moment(value).date();
    }
    return date.isValid() ? Converted(EntryValue(date)) : std::nullopt;
}

Converted toDateTime(const QVariant &value)
{
    QDateTime dateTime;
    if (value.userType() == QMetaType::QDateTime) {
        dateTime = value.toDateTime();
    } else if (value.userType() == QMetaType::QDate) {
        dateTime = value.toDate().startOfDay();
    } else if (isText(value)) {
        dateTime = moment(value);
    }
    return dateTime.isValid() ? Converted(EntryValue(dateTime)) : std::nullopt;
}

QVariantList pieces(const QString &text)
{
    QVariantList list;
    if (!text.isEmpty()) {
        const QStringList texts = text.split(ListSeparator);
        list.reserve(texts.size());
        for (const QString &piece : texts) {
            list.append(piece);
        }
    }
    return list;
}

Converted toList(const QVariant &value)
{
    if (value.userType() == QMetaType::QVariantList) {
        return EntryValue(value.toList());
    }
    if (value.userType() == QMetaType::QStringList) {
        return EntryValue(value.toList());
    }
    if (isText(value)) {
        return EntryValue(pieces(value.toString()));
    }
    return bestFittingValue(value) ? Converted(EntryValue(QVariantList{value})) : std::nullopt;
}

Converted converted(const QVariant &value, nkMetadataTypes::ValueType type)
{
    switch (type) {
    case nkMetadataTypes::String:
        return toText(value);
    case nkMetadataTypes::Integer:
        return toInteger(value);
    case nkMetadataTypes::Float:
        return toFloat(value);
    case nkMetadataTypes::Boolean:
        return toBoolean(value);
    case nkMetadataTypes::Time:
        return toTime(value);
    case nkMetadataTypes::Date:
        return toDate(value);
    case nkMetadataTypes::DateTime:
        return toDateTime(value);
    case nkMetadataTypes::List:
        return toList(value);
    case nkMetadataTypes::Tag:
        break;
    }
    return std::nullopt;
}

/// Whole numbers wider than int.
Converted fittingInteger(const QVariant &value)
{
    const Converted integer = toInteger(value);
    return integer ? integer : EntryValue(EntryValue::NumberText{value.toString()});
}

} // namespace

EntryValue defaultValue(nkMetadataTypes::ValueType type)
{
    switch (type) {
    case nkMetadataTypes::String:
        return EntryValue(QString());
    case nkMetadataTypes::Integer:
        return EntryValue(0);
    case nkMetadataTypes::Float:
        return EntryValue(0.0);
    case nkMetadataTypes::Boolean:
        return EntryValue(false);
    case nkMetadataTypes::Time:
        return EntryValue(QTime(0, 0));
    case nkMetadataTypes::Date:
        return EntryValue(QDate::currentDate());
    case nkMetadataTypes::DateTime:
        return EntryValue(QDate::currentDate().startOfDay());
    case nkMetadataTypes::List:
        return EntryValue(QVariantList());
    case nkMetadataTypes::Tag:
        break;
    }
    return EntryValue();
}

Converted convertedValue(const QVariant &value, nkMetadataTypes::ValueType type)
{
    if (!value.isValid() || (isList(value) && !isStorableList(value.toList()))) {
        return std::nullopt;
    }
    if (isList(value) && type != nkMetadataTypes::List && type != nkMetadataTypes::String) {
        const QVariantList list = value.toList();
        return list.size() == 1 ? convertedValue(list.first(), type) : std::nullopt;
    }
    return converted(value, type);
}

Converted bestFittingValue(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return std::nullopt;
    case QMetaType::Bool:
        return EntryValue(value.toBool());
    case QMetaType::Double:
    case QMetaType::Float:
        return EntryValue(value.toDouble());
    case QMetaType::QTime:
        return toTime(value);
    case QMetaType::QDate:
        return toDate(value);
    case QMetaType::QDateTime:
        return toDateTime(value);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return convertedValue(value, nkMetadataTypes::List);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return fittingInteger(value);
    default:
        return toText(value);
    }
}

QString valueText(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return numberText(value.toDouble());
    case QMetaType::QTime:
        return timeText(value.toTime());
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return dateTimeText(value.toDateTime());
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        QStringList texts;
        const QVariantList list = value.toList();
        std::transform(list.cbegin(), list.cend(), std::back_inserter(texts), &valueText);
        return texts.join(ListSeparator);
    }
    default:
        return value.toString();
    }
}

bool isNumberLiteral(const QString &text)
{
    static const QRegularExpression literal(
        QStringLiteral("\\A-?(0|[1-9][0-9]*)(\\.[0-9]+)?([eE][-+]?[0-9]+)?\\z"));
    return literal.match(text).hasMatch();
}

} // namespace kernel
