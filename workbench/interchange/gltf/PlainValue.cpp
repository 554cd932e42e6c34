#include <interchange/gltf/PlainValue.h>

#include <interchange/json/JsonReader.h>
#include <interchange/json/JsonString.h>
#include <interchange/json/JsonValue.h>
#include <interchange/sets/MomentText.h>
#include <interchange/sets/SetFileNames.h>
#include <interchange/sets/TextBuffer.h>

#include <kernel/document/ValueConversion.h>

#include <QDateTime>

#include <charconv>
#include <cmath>

namespace interchange {

namespace {

using Types = nkMetadataTypes;

bool isNumber(std::string_view json)
{
    return !json.empty() && (json.front() == '-' || (json.front() >= '0' && json.front() <= '9'));
}

bool isWhole(std::string_view json)
{
    return json.find_first_of(".eE") == std::string_view::npos;
}

/// Both zeros are told apart: a file has reasons for its minus.
bool isSame(double left, double right)
{
    return left == right && std::signbit(left) == std::signbit(right);
}

bool isQuoted(std::string_view json, const QString &text)
{
    if (json.size() < 2 || json.front() != '"')
        return false;
    const std::string_view inside = json.substr(1, json.size() - 2);
    const bool isAscii = inside.size() == size_t(text.size());
    // Nearly all texts are as short as their bytes and need no decoding.
    if (isAscii && inside.find('\\') == std::string_view::npos
        && text == QLatin1String(inside.data(), int(inside.size())))
        return true;
    return JsonString::decoded(inside) == text
           || QByteArray::fromRawData(json.data(), int(json.size()))
                  == PlainValue::textOf(kernel::EntryValue(text));
}

/// Whether the digits before the exponent hold anything but zeros.
bool isZero(std::string_view json)
{
    const std::string_view digits = json.substr(0, json.find_first_of("eE"));
    return digits.find_first_of("123456789") == std::string_view::npos;
}

template <typename Number>
bool isParsed(std::string_view json, Number &number)
{
    const auto result = std::from_chars(json.data(), json.data() + json.size(), number);
    return result.ec == std::errc() && result.ptr == json.data() + json.size();
}

std::string_view nameOf(double number)
{
    if (std::isnan(number))
        return SetFileNames::NotANumber;
    return number > 0 ? SetFileNames::Infinity : SetFileNames::MinusInfinity;
}

QString momentText(const QVariant &moment)
{
    switch (moment.userType()) {
    case QMetaType::QTime:
        return moment.toTime().isValid() ? QString::fromLatin1(MomentText::ofTime(moment.toTime()))
                                         : QString();
    case QMetaType::QDate:
        return moment.toDate().isValid() ? QString::fromLatin1(MomentText::ofDate(moment.toDate()))
                                         : QString();
    default:
        return moment.toDateTime().isValid()
                   ? QString::fromLatin1(MomentText::ofDateTime(moment.toDateTime()))
                   : QString();
    }
}

void addFloat(TextBuffer &out, double number)
{
    if (std::isfinite(number))
        return out.addDouble(number);
    out.add("\"");
    out.add(nameOf(number));
    out.add("\"");
}

/// An element of a list, or a value on its own.
void addValue(TextBuffer &out, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return out.add("null");
    case QMetaType::Bool:
        return out.add(value.toBool() ? "true" : "false");
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return out.addInteger(value.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return addFloat(out, value.toDouble());
    case QMetaType::QTime:
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return out.addString(momentText(value));
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return out.addString(kernel::valueText(value));
    default:
        return out.addString(value.toString());
    }
}

QByteArray valueText(const QVariant &value)
{
    TextBuffer out;
    addValue(out, value);
    return out.bytes();
}

bool isFloat(std::string_view json, double number)
{
    double parsed = 0;
    if (!std::isfinite(number)) {
        const std::string_view name = nameOf(number);
        return isQuoted(json, QString::fromLatin1(name.data(), int(name.size())));
    }
    if (!isNumber(json) || isWhole(json))
        return false;
    // A zero with any exponent is zero, whatever the library thinks of the exponent.
    if (isZero(json))
        return isSame(json.front() == '-' ? -0.0 : 0.0, number);
    return isParsed(json, parsed) && isSame(parsed, number);
}

/// A number that no number type holds is text in a list as it is outside of lists.
bool isLongNumber(const JsonValue &json, const QString &text)
{
    bool fits = false;
    if (!json.isNumber())
        return false;
    if (json.isInteger())
        json.toInt(&fits);
    else
        json.toDouble(&fits);
    return !fits && json.toText() == text;
}

bool isElement(const JsonValue &json, const QVariant &element)
{
    switch (element.userType()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return isFloat(json.raw(), element.toDouble());
    case QMetaType::QString:
        return isQuoted(json.raw(), element.toString()) || isLongNumber(json, element.toString());
    default: {
        const QByteArray text = valueText(element);
        return json.raw() == std::string_view(text.constData(), size_t(text.size()));
    }
    }
}

bool readArray(std::string_view json, JsonTree &tree)
{
    return !json.empty() && json.front() == '['
           && JsonReader().read(QByteArray::fromRawData(json.data(), int(json.size())), tree);
}

bool isList(std::string_view json, const QVariantList &list)
{
    JsonTree tree;
    if (!readArray(json, tree))
        return false;
    int position = 0;
    for (const JsonValue child : tree.root().children()) {
        if (position == list.size() || !isElement(child, list.at(position)))
            return false;
        ++position;
    }
    return position == list.size();
}

/// The elements that stood there, by position: their spelling serves an equal element, first of all the one at the
/// same place, else those that a person has moved.
QByteArray spellingIn(const QVector<JsonValue> &before, int position, const QVariant &element)
{
    const auto spelling = [](const JsonValue &json) {
        return QByteArray(json.raw().data(), int(json.raw().size()));
    };
    if (position < before.size() && isElement(before.at(position), element))
        return spelling(before.at(position));
    if (element.userType() == QMetaType::QString && kernel::isNumberLiteral(element.toString())) {
        for (const JsonValue &json : before) {
            if (isLongNumber(json, element.toString()))
                return spelling(json);
        }
    }
    return valueText(element);
}

QByteArray listText(const QVariantList &list, std::string_view before)
{
    JsonTree tree;
    QVector<JsonValue> present;
    QByteArray separator(", ");
    if (readArray(before, tree)) {
        for (const JsonValue child : tree.root().children())
            present.append(child);
    }
    if (present.size() > 1)
        separator = tree.text().mid(int(present.at(0).span().end()),
                                    int(present.at(1).span().offset - present.at(0).span().end()));
    QByteArrayList texts;
    for (int i = 0; i < list.size(); ++i)
        texts.append(spellingIn(present, i, list.at(i)));
    return '[' + texts.join(separator) + ']';
}

} // namespace

QByteArray PlainValue::textOf(const kernel::EntryValue &value, std::string_view before)
{
    const QVariant variant = value.toVariant();
    if (value.isNumberText())
        return variant.toString().toLatin1();
    if (!value.isTag() && value.type() == Types::List)
        return listText(variant.toList(), before);
    return valueText(variant);
}

bool PlainValue::isTextOf(std::string_view json, const kernel::EntryValue &value)
{
    if (value.isTag())
        return json == "null";
    const QVariant variant = value.toVariant();
    int whole = 0;
    switch (value.type()) {
    case Types::Integer:
        return isNumber(json) && isWhole(json) && isParsed(json, whole) && whole == variant.toInt();
    case Types::Float:
        return isFloat(json, variant.toDouble());
    case Types::Boolean:
        return json == (variant.toBool() ? "true" : "false");
    case Types::List:
        return isList(json, variant.toList());
    case Types::Time:
    case Types::Date:
    case Types::DateTime:
        return isQuoted(json, momentText(variant));
    case Types::String:
    case Types::Tag:
        break;
    }
    if (value.isNumberText())
        return isNumber(json) && variant.toString() == QLatin1String(json.data(), int(json.size()));
    return isQuoted(json, variant.toString());
}

} // namespace interchange
