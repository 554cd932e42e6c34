#include <interchange/json/JsonValue.h>

#include <interchange/json/JsonKeys.h>
#include <interchange/json/JsonString.h>

#include <charconv>

namespace interchange {

JsonSpan JsonValue::memberSpan() const
{
    const JsonCell &own = cell();
    if (own.keyLength == 0)
        return span();
    return {own.keyOffset, own.offset + own.length - own.keyOffset};
}

QString JsonValue::key() const
{
    return cell().keyEscaped ? JsonString::decoded(rawKey()) : JsonString::fromUtf8(rawKey());
}

bool JsonValue::keyIs(QLatin1String text) const
{
    if (cell().keyEscaped)
        return key() == text;
    return rawKey() == std::string_view(text.data(), static_cast<size_t>(text.size()));
}

QString JsonValue::toText(bool *replaced) const
{
    if (cell().kind != JsonKind::String)
        return JsonString::fromUtf8(raw());
    const std::string_view inside = bytes(cell().offset + 1, cell().length - 2);
    return cell().valueEscaped ? JsonString::decoded(inside, replaced) : JsonString::fromUtf8(inside);
}

bool JsonValue::toBool() const
{
    return isBoolean() && m_tree->text().at(static_cast<int>(cell().offset)) == 't';
}

int JsonValue::toInt(bool *ok) const
{
    int number = 0;
    *ok = false;
    if (!isInteger())
        return 0;
    const char *const first = m_tree->text().constData() + cell().offset;
    const auto result = std::from_chars(first, first + cell().length, number);
    *ok = result.ec == std::errc();
    return *ok ? number : 0;
}

namespace {

/// Whether the digits before the exponent hold anything but zeros.
bool isZeroLiteral(const char *first, const char *last)
{
    for (; first != last && *first != 'e' && *first != 'E'; ++first) {
        if (*first >= '1' && *first <= '9')
            return false;
    }
    return true;
}

} // namespace

double JsonValue::toDouble(bool *ok) const
{
    *ok = false;
    if (!isNumber())
        return 0.0;
    const char *const first = m_tree->text().constData() + cell().offset;
    const char *const last = first + cell().length;
    double number = 0.0;
    const auto result = std::from_chars(first, last, number);
    const bool zero = isZeroLiteral(first, last);
    // A zero with any exponent is zero, whatever the library thinks of the exponent.
    if (zero)
        number = *first == '-' ? -0.0 : 0.0;
    *ok = zero || result.ec == std::errc();
    return *ok ? number : 0.0;
}

JsonChildren JsonValue::children() const
{
    return isPresent() ? JsonChildren(m_tree, m_index + 1, cell().next) : JsonChildren();
}

quint32 JsonValue::count() const
{
    quint32 number = 0;
    for (const JsonValue child : children()) {
        Q_UNUSED(child)
        ++number;
    }
    return number;
}

JsonValue JsonValue::find(QLatin1String key) const
{
    JsonValue found;
    if (!isObject())
        return found;
    for (const JsonValue member : children()) {
        if (member.keyIs(key))
            found = member;
    }
    return found;
}

QVector<JsonValue> JsonValue::hiddenMembers() const
{
    return isObject() ? JsonKeys::hiddenMembers(*this) : QVector<JsonValue>();
}

} // namespace interchange
