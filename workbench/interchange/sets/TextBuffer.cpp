#include <interchange/sets/TextBuffer.h>

#include <algorithm>
#include <charconv>

namespace interchange {

namespace {

/// A UTF-16 unit becomes at most "\uXXXX".
constexpr int LongestEscape = 6;
/// Bytes of a number.
constexpr int LongestNumber = 32;
/// Units of a text for which room is made at once.
constexpr int UnitsAtOnce = 1 << 16;
/// As much as files may have; arrays of bytes end at twice of it.
constexpr int LargestText = 1 << 30;

char *addEscape(char *at, ushort unit)
{
    static const char digits[] = "0123456789abcdef";
    *at++ = '\\';
    switch (unit) {
    case '"':
    case '\\':
        *at++ = char(unit);
        return at;
    case '\n':
        *at++ = 'n';
        return at;
    case '\t':
        *at++ = 't';
        return at;
    case '\r':
        *at++ = 'r';
        return at;
    default:
        *at++ = 'u';
        for (int shift = 12; shift >= 0; shift -= 4)
            *at++ = digits[(unit >> shift) & 0xf];
        return at;
    }
}

char *addUtf8(char *at, uint point)
{
    if (point < 0x800) {
        *at++ = char(0xc0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            *at++ = char(0xe0 | (point >> 12));
        } else {
            *at++ = char(0xf0 | (point >> 18));
            *at++ = char(0x80 | ((point >> 12) & 0x3f));
        }
        *at++ = char(0x80 | ((point >> 6) & 0x3f));
    }
    *at++ = char(0x80 | (point & 0x3f));
    return at;
}

bool isPlain(ushort unit)
{
    return unit >= 0x20 && unit < 0x7f && unit != '"' && unit != '\\';
}

} // namespace

char *TextBuffer::room(int size)
{
    if (m_size > LargestText) {
        m_isOverfull = true;
        m_size = 0;
    }
    if (m_bytes.size() - m_size < size)
        m_bytes.resize(std::max(m_size + size, m_bytes.size() + m_bytes.size() / 4 + 256));
    return m_bytes.data() + m_size;
}

void TextBuffer::add(std::string_view text)
{
    std::copy(text.begin(), text.end(), room(int(text.size()))); // empty texts may be null
    m_size += int(text.size());
}

void TextBuffer::addString(const QString &text)
{
    add("\"");
    const auto *unit = reinterpret_cast<const ushort *>(text.utf16());
    const ushort *const end = unit + text.size();
    while (unit != end) {
        const auto count = int(std::min<qint64>(end - unit, UnitsAtOnce));
        char *const from = room(count * LongestEscape);
        m_size += int(addUnits(from, unit, unit + count, end) - from);
    }
    add("\"");
}

/// Adds the units up to `last`, and the second half of a pair that begins before it. A pair takes less room than
/// one escape.
char *TextBuffer::addUnits(char *at, const ushort *&unit, const ushort *last, const ushort *end)
{
    for (; unit < last; ++unit) {
        if (isPlain(*unit)) {
            *at++ = char(*unit);
        } else if (QChar::isHighSurrogate(*unit) && unit + 1 != end && QChar::isLowSurrogate(unit[1])) {
            at = addUtf8(at, QChar::surrogateToUcs4(unit[0], unit[1]));
            ++unit;
        } else if (*unit <= 0x7f || QChar::isSurrogate(*unit)) {
            at = addEscape(at, *unit);
        } else {
            at = addUtf8(at, *unit);
        }
    }
    return at;
}

void TextBuffer::addInteger(qint64 number)
{
    char *const at = room(LongestNumber);
    m_size += int(std::to_chars(at, at + LongestNumber, number).ptr - at);
}

void TextBuffer::addDouble(double number)
{
    char *const at = room(LongestNumber + 2);
    char *end = std::to_chars(at, at + LongestNumber, number).ptr;
    if (std::none_of(at, end, [](char c) { return c == '.' || c == 'e'; })) {
        *end++ = '.';
        *end++ = '0';
    }
    m_size += int(end - at);
}

} // namespace interchange
