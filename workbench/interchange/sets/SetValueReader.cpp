#include <interchange/sets/SetValueReader.h>

#include <interchange/json/JsonString.h>
#include <interchange/sets/MomentText.h>
#include <interchange/sets/ObjectMembers.h>
#include <interchange/sets/SetFileNames.h>

#include <charconv>
#include <limits>

namespace interchange {

namespace {

std::string_view inside(const JsonValue &string)
{
    const std::string_view raw = string.raw();
    return raw.substr(1, raw.size() - 2);
}

/// Decodes escapes and keeps halves of surrogate pairs, which JsonString replaces.
QString exactText(std::string_view inside)
{
    QString text;
    while (!inside.empty()) {
        const size_t escape = std::min(inside.find("\\u"), inside.size());
        const size_t pair = inside.find("\\\\");
        if (pair < escape) {
            text += JsonString::decoded(inside.substr(0, pair + 2));
            inside.remove_prefix(pair + 2);
            continue;
        }
        text += JsonString::decoded(inside.substr(0, escape));
        inside.remove_prefix(escape);
        if (!inside.empty()) {
            ushort unit = 0;
            std::from_chars(inside.data() + 2, inside.data() + 6, unit, 16);
            text += QChar(unit);
            inside.remove_prefix(6);
        }
    }
    return text;
}

bool specialNumber(const JsonValue &json, double &number)
{
    const std::string_view name = json.isString() ? inside(json) : std::string_view();
    if (name == SetFileNames::NotANumber)
        number = std::numeric_limits<double>::quiet_NaN();
    else if (name == SetFileNames::Infinity)
        number = std::numeric_limits<double>::infinity();
    else if (name == SetFileNames::MinusInfinity)
        number = -std::numeric_limits<double>::infinity();
    else
        return false;
    return true;
}

kernel::EntryValue momentValue(const QVariant &moment)
{
    switch (moment.userType()) {
    case QMetaType::QTime:
        return kernel::EntryValue(moment.toTime());
    case QMetaType::QDate:
        return kernel::EntryValue(moment.toDate());
    default:
        return kernel::EntryValue(moment.toDateTime());
    }
}

bool isNull(const QVariant &moment)
{
    switch (moment.userType()) {
    case QMetaType::QTime:
        return !moment.toTime().isValid();
    case QMetaType::QDate:
        return !moment.toDate().isValid();
    default:
        return !moment.toDateTime().isValid();
    }
}

} // namespace

QString SetValueReader::text(const JsonValue &json)
{
    bool replaced = false;
    const QString text = json.toText(&replaced);
    return replaced ? exactText(inside(json)) : text;
}

bool SetValueReader::read(int type, const JsonValue &json, kernel::EntryValue &value)
{
    switch (type) {
    case nkMetadataTypes::String:
        return readText(json, value);
    case nkMetadataTypes::Integer:
        return readInteger(json, value);
    case nkMetadataTypes::Float: {
        double number = 0;
        const bool read = readFloat(json, number);
        value = kernel::EntryValue(number);
        return read;
    }
    case nkMetadataTypes::Boolean:
        value = kernel::EntryValue(json.toBool());
        return json.isBoolean() || fail(json, tr("the value of a boolean is true or false"));
    case nkMetadataTypes::List: {
        QVariantList list;
        const bool read = readList(json, 1, list);
        value = kernel::EntryValue(list);
        return read;
    }
    case SetFileNames::NumberText:
        return readNumberText(json, value);
    default: {
        QVariant moment;
        if (!readMoment(type, json, moment))
            return false;
        value = momentValue(moment);
        return !isNull(moment) || fail(json, tr("the value of a date or time may not be empty"));
    }
    }
}

bool SetValueReader::readText(const JsonValue &json, kernel::EntryValue &value)
{
    if (!json.isString())
        return fail(json, tr("the value of a string is a text in quotes"));
    value = kernel::EntryValue(text(json));
    return true;
}

bool SetValueReader::readNumberText(const JsonValue &json, kernel::EntryValue &value)
{
    const QString number = json.isString() ? json.toText() : QString();
    value = kernel::EntryValue(kernel::EntryValue::NumberText{number});
    return kernel::isNumberLiteral(number)
           || fail(json, tr("the value of a number is the text of a JSON number in quotes"));
}

bool SetValueReader::readInteger(const JsonValue &json, kernel::EntryValue &value)
{
    bool ok = false;
    value = kernel::EntryValue(json.toInt(&ok));
    return ok || fail(json, tr("the value of an integer is a whole number of 32 bits"));
}

bool SetValueReader::readFloat(const JsonValue &json, double &number)
{
    bool ok = false;
    number = json.toDouble(&ok);
    return ok || specialNumber(json, number)
           || fail(json,
                   tr("the value of a float is a number that a double can hold, or “NaN”, “Infinity” or "
                      "“-Infinity” in quotes"));
}

/// An empty text is a moment that is none; only elements of lists may hold it.
bool SetValueReader::readMoment(int type, const JsonValue &json, QVariant &moment)
{
    const QString text = json.isString() ? json.toText() : QStringLiteral("?");
    if (type == nkMetadataTypes::Time)
        moment = MomentText::toTime(text);
    else if (type == nkMetadataTypes::Date)
        moment = MomentText::toDate(text);
    else
        moment = MomentText::toDateTime(text);
    return text.isEmpty() || !isNull(moment)
           || fail(json, tr("the value of a date or time is ISO text such as “2024-02-29”, “13:05:00.250” or "
                            "“2024-02-29T13:05:00+01:00[Europe/Berlin]”"));
}

bool SetValueReader::readList(const JsonValue &json, int depth, QVariantList &list)
{
    if (!json.isArray())
        return fail(json, tr("the value of a list is an array"));
    if (depth > m_limits.listDepth)
        return fail(json, tr("lists stand more than %1 levels inside each other").arg(m_limits.listDepth));
    for (const JsonValue child : json.children()) {
        QVariant element;
        if (!readElement(child, depth, element))
            return false;
        list.append(element);
    }
    return true;
}

bool SetValueReader::readElement(const JsonValue &json, int depth, QVariant &element)
{
    switch (json.kind()) {
    case JsonKind::Null:
        return true;
    case JsonKind::Boolean:
        element = json.toBool();
        return true;
    case JsonKind::Integer:
        return readWholeElement(json, element);
    case JsonKind::String:
        element = text(json);
        return true;
    case JsonKind::Object:
        return readTypedElement(json, element);
    case JsonKind::Array: {
        QVariantList inner;
        const bool read = readList(json, depth + 1, inner);
        element = QVariant(inner);
        return read;
    }
    case JsonKind::Decimal:
        break;
    }
    double number = 0;
    const bool read = readFloat(json, number);
    element = number;
    return read;
}

bool SetValueReader::readWholeElement(const JsonValue &json, QVariant &element)
{
    const std::string_view digits = json.raw();
    qint64 number = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc())
        return fail(json, tr("a whole number in a list has at most 64 bits"));
    const bool isInt = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    element = isInt ? QVariant(int(number)) : QVariant(qlonglong(number));
    return true;
}

bool SetValueReader::readTypedElement(const JsonValue &json, QVariant &element)
{
    ObjectMembers members({{"type", true}, {"value", true}});
    if (!members.read(json, m_error))
        return false;
    const std::string_view type = members.text(0);
    if (type == SetFileNames::Types[nkMetadataTypes::Float]) {
        double number = 0;
        const bool read = readFloat(members.value(1), number);
        element = number;
        return read;
    }
    for (const int moment : {nkMetadataTypes::Time, nkMetadataTypes::Date, nkMetadataTypes::DateTime}) {
        if (type == SetFileNames::Types[moment])
            return readMoment(moment, members.value(1), element);
    }
    return fail(members.value(0), tr("an element with a type is a “float”, “time”, “date” or “dateTime”"));
}

bool SetValueReader::fail(const JsonValue &json, const QString &reason)
{
    m_error = SetFileError::atValue(json, reason);
    return false;
}

} // namespace interchange
