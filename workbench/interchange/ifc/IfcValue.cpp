#include <interchange/ifc/IfcValue.h>

#include <interchange/ifc/StepText.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace interchange {

namespace {

using Type = nkMetadataTypes::ValueType;

QString latin1(std::string_view text)
{
    return QString::fromLatin1(text.data(), int(text.size()));
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string_view withoutPlus(std::string_view digits)
{
    return digits.substr(!digits.empty() && digits.front() == '+' ? 1 : 0);
}

/// Whether a number of this type is a measure, however it is written.
bool isMeasure(std::string_view type)
{
    return type == "IFCREAL" || (endsWith(type, "MEASURE") && type != "IFCCOUNTMEASURE");
}

bool isInt(double number)
{
    return number == std::floor(number) && std::abs(number) <= std::numeric_limits<int>::max();
}

} // namespace

IfcValue::Read IfcValue::single(const StepValue &value) const
{
    const std::string_view type = value.kind == StepKind::Typed ? value.text : std::string_view();
    const StepValue &inner = m_arguments.inner(value);
    if (inner.kind == StepKind::Omitted || inner.kind == StepKind::Derived)
        return {Type::String, QVariant(), true, {}};
    return inner.kind == StepKind::List ? listOf(inner) : plain(inner, type);
}

IfcValue::Read IfcValue::list(const StepValue &values) const
{
    if (values.kind == StepKind::Omitted || values.kind == StepKind::Derived)
        return {Type::String, QVariant(), true, {}};
    return listOf(m_arguments.inner(values));
}

IfcValue::Read IfcValue::listOf(const StepValue &values) const
{
    Read read{Type::List, QVariant(), false, {}};
    QVariantList elements;
    for (const StepValue *child : m_arguments.children(values))
        elements.append(element(*child, read.converted));
    read.value = elements;
    return read;
}

IfcValue::Read IfcValue::bounds(const StepValue &from, const StepValue &to) const
{
    Read read{Type::List, QVariant(), false, {}};
    const QVariant first = element(from, read.converted);
    const QVariant last = element(to, read.converted);
    if (!first.isValid() && !last.isValid())
        return {Type::String, QVariant(), true, {}};
    read.value = QVariantList{first, last};
    return read;
}

/// An element of a list: scalar, or a list where several numbers are one value.
QVariant IfcValue::element(const StepValue &value, std::optional<ImportReason> &converted) const
{
    const StepValue &inner = m_arguments.inner(value);
    if (inner.kind == StepKind::List)
        return QVariant();
    const Read read = single(value);
    if (read.converted)
        converted = read.converted;
    return read.value;
}

IfcValue::Read IfcValue::measure(const StepValue &value) const
{
    const StepValue &inner = m_arguments.inner(value);
    const bool isNumber = inner.kind == StepKind::Integer || inner.kind == StepKind::Real;
    return isNumber ? real(inner.text) : single(value);
}

IfcValue::Read IfcValue::count(const StepValue &value) const
{
    const StepValue &inner = m_arguments.inner(value);
    if (inner.kind == StepKind::Integer)
        return integer(inner.text);
    const Read read = single(value);
    if (read.type != Type::Float || !isInt(read.value.toDouble()))
        return read;
    return {Type::Integer, int(read.value.toDouble()), false, {}};
}

IfcValue::Read IfcValue::plain(const StepValue &value, std::string_view type) const
{
    switch (value.kind) {
    case StepKind::Integer:
        return isMeasure(type) ? real(value.text) : integer(value.text);
    case StepKind::Real:
        if (type == "IFCCOUNTMEASURE" && isInt(real(value.text).value.toDouble()))
            return {Type::Integer, int(real(value.text).value.toDouble()), false, {}};
        return real(value.text);
    case StepKind::Enumeration:
        return truth(value.text);
    case StepKind::Text:
        return {Type::String, stepText(value.text), false, {}};
    default:
        return {Type::String, latin1(value.text), false, {}};
    }
}

IfcValue::Read IfcValue::integer(std::string_view digits)
{
    int number = 0;
    const std::string_view plain = withoutPlus(digits);
    const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    if (read.ec == std::errc() && read.ptr == plain.data() + plain.size())
        return {Type::Integer, number, false, {}};
    return {Type::String, latin1(digits), false, ImportReason::LongInteger};
}

/// "1." and "1.E-3" are numbers here.
IfcValue::Read IfcValue::real(std::string_view digits)
{
    double number = 0;
    const std::string_view plain = withoutPlus(digits);
    const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    if (read.ec == std::errc() && read.ptr == plain.data() + plain.size())
        return {Type::Float, number, false, {}};
    return {Type::String, latin1(digits), false, ImportReason::UnboundedNumber};
}

IfcValue::Read IfcValue::truth(std::string_view name)
{
    if (name == "T" || name == "F")
        return {Type::Boolean, name == "T", false, {}};
    if (name == "U")
        return {Type::String, QStringLiteral("unknown"), false, ImportReason::UnknownLogical};
    return {Type::String, latin1(name), false, {}};
}

} // namespace interchange
