#include "EntryValue.h"

#include <QTimeZone>

#include <cmath>

namespace kernel {

namespace {

bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// Two moments are the same only where they are also told in the same way: 12:00 UTC is not 14:00 +02:00.
bool isSame(const QDateTime &left, const QDateTime &right)
{
    if (left.timeSpec() != right.timeSpec() || left != right) {
        return false;
    }
    if (left.timeSpec() == Qt::TimeZone) {
        return left.timeZone() == right.timeZone();
    }
    return left.timeSpec() != Qt::OffsetFromUTC || left.offsetFromUtc() == right.offsetFromUtc();
}

bool isSame(const QVariantList &left, const QVariantList &right)
{
    if (left.size() != right.size()) {
        return false;
    }
    return left.isSharedWith(right) || std::equal(left.cbegin(), left.cend(), right.cbegin(), &isSameValue);
}

/// The rest: QString, int, bool, QTime, QDate.
template <typename Value>
bool isSame(const Value &left, const Value &right)
{
    return left == right;
}

struct ToVariant
{
    QVariant operator()(std::monostate) const { return QVariant(); }
    QVariant operator()(const EntryValue::NumberText &number) const { return number.text; }
    template <typename Value>
    QVariant operator()(const Value &value) const
    {
        return QVariant(value);
    }
};

struct ToType
{
    using T = nkMetadataTypes;

    T::ValueType operator()(std::monostate) const { return T::String; }
    T::ValueType operator()(const QString &) const { return T::String; }
    T::ValueType operator()(const EntryValue::NumberText &) const { return T::String; }
    T::ValueType operator()(int) const { return T::Integer; }
    T::ValueType operator()(double) const { return T::Float; }
    T::ValueType operator()(bool) const { return T::Boolean; }
    T::ValueType operator()(QTime) const { return T::Time; }
    T::ValueType operator()(QDate) const { return T::Date; }
    T::ValueType operator()(const QDateTime &) const { return T::DateTime; }
    T::ValueType operator()(const QVariantList &) const { return T::List; }
};

struct SameAs
{
    bool operator()(std::monostate, std::monostate) const { return true; }
    bool operator()(const EntryValue::NumberText &left, const EntryValue::NumberText &right) const
    {
        return left.text == right.text;
    }
    template <typename Value>
    bool operator()(const Value &left, const Value &right) const
    {
        return isSame(left, right);
    }
    template <typename Left, typename Right>
    bool operator()(const Left &, const Right &) const
    {
        return false;
    }
};

} // namespace

nkMetadataTypes::ValueType EntryValue::type() const
{
    return std::visit(ToType(), m_data);
}

QVariant EntryValue::toVariant() const
{
    return std::visit(ToVariant(), m_data);
}

const QString *EntryValue::text() const
{
    if (const NumberText *number = std::get_if<NumberText>(&m_data)) {
        return &number->text;
    }
    return std::get_if<QString>(&m_data);
}

bool EntryValue::operator==(const EntryValue &other) const
{
    const QString *ownText = text();
    const QString *otherText = other.text();
    if (ownText || otherText) {
        return ownText && otherText && *ownText == *otherText;
    }
    return std::visit(SameAs(), m_data, other.m_data);
}

bool isSameValue(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType()) {
        return false;
    }
    switch (left.userType()) {
    case QMetaType::Double:
        return isSame(left.toDouble(), right.toDouble());
    case QMetaType::Float:
        return isSame(double(left.toFloat()), double(right.toFloat()));
    case QMetaType::QDateTime:
        return isSame(left.toDateTime(), right.toDateTime());
    case QMetaType::QVariantList:
        return isSame(left.toList(), right.toList());
    default:
        return left == right;
    }
}

} // namespace kernel
