#include <interchange/json/JsonParser.h>

#include <interchange/json/JsonPath.h>
#include <interchange/json/JsonString.h>

#include <QStringList>

#include <array>
#include <cstring>
#include <limits>

namespace interchange {

namespace {

// Measured on scene files: one value in 10 to 40 bytes. Guessing low costs a few copies, guessing high only
// address space, which is why texts that are mostly one embedded buffer do no harm.
constexpr int BytesPerValue = 24;
constexpr size_t LargestFirstReserve = 4u << 20;

/// A few milliseconds' worth.
constexpr int ValuesBetweenQuestions = 1 << 16;

/// Bytes that end the quick run through a string: quote, backslash, controls and everything that is not ASCII.
constexpr std::array<bool, 256> stoppers()
{
    std::array<bool, 256> stops{};
    for (size_t byte = 0; byte < stops.size(); ++byte)
        stops[byte] = byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\';
    return stops;
}

constexpr std::array<bool, 256> StopsString = stoppers();

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

JsonParser::JsonParser(const QByteArray &text, const JsonLimits &limits, const JsonGoOn &goOn)
    : m_text(text),
      m_limits(limits),
      m_goOn(goOn),
      m_begin(m_text.constData()),
      m_end(m_begin + m_text.size()),
      m_at(m_begin)
{
    m_tree.m_text = m_text;
    m_tree.m_cells.reserve(std::min(size_t(m_text.size()) / BytesPerValue + 16, LargestFirstReserve));
}

bool JsonParser::parse()
{
    if (m_text.startsWith("\xef\xbb\xbf"))
        m_at += 3;
    if (!parseOutermost())
        return false;
    while (!m_open.empty()) {
        if (!parseInside() || !goesOn())
            return false;
    }
    skipSpace();
    return atEnd()
           || fail(JsonErrorCode::TrailingText,
                   tr("%1 stands behind the end of the JSON text").arg(characterHere()));
}

bool JsonParser::goesOn()
{
    if (!m_goOn || --m_untilAsked > 0)
        return true;
    m_untilAsked = ValuesBetweenQuestions;
    return m_goOn(double(offsetOf(m_at)) / m_text.size())
           || fail(JsonErrorCode::Cancelled, tr("the reading was cancelled"));
}

bool JsonParser::parseOutermost()
{
    skipSpace();
    if (atEnd())
        return fail(JsonErrorCode::Empty, tr("the JSON text is empty"));
    return parseValue();
}

bool JsonParser::parseInside()
{
    skipSpace();
    return m_open.back().isObject ? parseMemberOrEnd() : parseElementOrEnd();
}

bool JsonParser::parseElementOrEnd()
{
    Open &array = m_open.back();
    if (!atEnd() && *m_at == ']') {
        closeContainer();
        return true;
    }
    if (!parseSeparator(array, ']'))
        return false;
    ++array.children;
    return parseValue();
}

bool JsonParser::parseMemberOrEnd()
{
    Open &object = m_open.back();
    if (!atEnd() && *m_at == '}') {
        closeContainer();
        return true;
    }
    return parseSeparator(object, '}') && parseKey(object) && parseValue();
}

/// Steps over the comma between two children, and the white space behind it.
bool JsonParser::parseSeparator(Open &container, char closing)
{
    if (container.children == 0)
        return true;
    if (atEnd() || *m_at != ',')
        return failExpecting(tr("a comma or “%1” is expected").arg(QLatin1Char(closing)));
    ++m_at;
    skipSpace();
    return true;
}

bool JsonParser::parseKey(Open &container)
{
    ++container.children;
    container.keyLength = 0;
    if (atEnd() || *m_at != '"')
        return failExpecting(tr("a key in quotes is expected"));
    const char *const from = m_at;
    bool escaped = false;
    if (!parseString(escaped))
        return false;
    container.keyOffset = offsetOf(from);
    container.keyLength = offsetOf(m_at) - container.keyOffset;
    container.keyEscaped = escaped;
    skipSpace();
    if (atEnd() || *m_at != ':')
        return failExpecting(tr("a colon is expected behind the key"));
    ++m_at;
    skipSpace();
    return true;
}

bool JsonParser::parseValue()
{
    if (atEnd())
        return failExpecting(tr("a value is expected"));
    if (m_tree.size() >= m_limits.values)
        return fail(JsonErrorCode::TooMany,
                    tr("there are more than %1 values in the text").arg(m_limits.values));
    switch (*m_at) {
    case '{':
        return openContainer(JsonKind::Object);
    case '[':
        return openContainer(JsonKind::Array);
    case '"':
        return parseTextValue();
    case 't':
        return parseLiteral("true", 4, JsonKind::Boolean);
    case 'f':
        return parseLiteral("false", 5, JsonKind::Boolean);
    case 'n':
        return parseLiteral("null", 4, JsonKind::Null);
    default:
        return *m_at == '-' || isDigit(*m_at) ? parseNumber() : failExpecting(tr("a value is expected"));
    }
}

bool JsonParser::parseLiteral(const char *word, int length, JsonKind kind)
{
    const char *const from = m_at;
    for (int i = 0; i < length; ++i, ++m_at) {
        if (atEnd() || *m_at != word[i])
            return failExpecting(tr("“%1” is expected").arg(QLatin1String(word, length)));
    }
    finishCell(appendCell(from, kind));
    return true;
}

bool JsonParser::parseNumber()
{
    const char *const from = m_at;
    JsonKind kind = JsonKind::Integer;
    if (*m_at == '-')
        ++m_at;
    const bool leadingZero = !atEnd() && *m_at == '0';
    if (leadingZero && m_at + 1 < m_end && isDigit(m_at[1]))
        return fail(JsonErrorCode::BadNumber, tr("a number may not begin with a zero"));
    if (!parseDigits())
        return false;
    if (!atEnd() && *m_at == '.') {
        kind = JsonKind::Decimal;
        ++m_at;
        if (!parseDigits())
            return false;
    }
    if (!atEnd() && (*m_at == 'e' || *m_at == 'E')) {
        kind = JsonKind::Decimal;
        ++m_at;
        if (!atEnd() && (*m_at == '+' || *m_at == '-'))
            ++m_at;
        if (!parseDigits())
            return false;
    }
    finishCell(appendCell(from, kind));
    return true;
}

bool JsonParser::parseDigits()
{
    if (atEnd())
        return fail(JsonErrorCode::Truncated, tr("the text ends inside a number"));
    if (!isDigit(*m_at))
        return fail(JsonErrorCode::BadNumber,
                    tr("%1 cannot stand in a number; a digit is expected").arg(characterHere()));
    while (!atEnd() && isDigit(*m_at))
        ++m_at;
    return true;
}

bool JsonParser::parseTextValue()
{
    const char *const from = m_at;
    bool escaped = false;
    if (!parseString(escaped))
        return false;
    JsonCell &cell = appendCell(from, JsonKind::String);
    cell.valueEscaped = escaped;
    finishCell(cell);
    return true;
}

/// Steps over a string with both its quotes.
bool JsonParser::parseString(bool &escaped)
{
    ++m_at;
    for (;;) {
        while (!atEnd() && !StopsString[static_cast<uchar>(*m_at)])
            ++m_at;
        if (atEnd())
            return fail(JsonErrorCode::Truncated, tr("the text ends inside a string"));
        if (*m_at == '"') {
            ++m_at;
            return true;
        }
        if (*m_at == '\\') {
            escaped = true;
            if (!parseEscape())
                return false;
            continue;
        }
        const int length = static_cast<uchar>(*m_at) < 0x80 ? 0 : JsonString::utf8Length(m_at, m_end);
        if (length == 0)
            return failInString();
        m_at += length;
    }
}

bool JsonParser::parseEscape()
{
    ++m_at;
    if (atEnd())
        return fail(JsonErrorCode::Truncated, tr("the text ends inside a string"));
    const char letter = *m_at++;
    if (letter != 'u') {
        if (letter != 0 && std::strchr("\"\\/bfnrt", letter))
            return true;
        --m_at;
        return fail(JsonErrorCode::BadString, tr("%1 cannot stand behind a backslash").arg(characterHere()));
    }
    for (int i = 0; i < 4; ++i, ++m_at) {
        if (atEnd())
            return fail(JsonErrorCode::Truncated, tr("the text ends inside a string"));
        if (!isHexDigit(*m_at))
            return fail(JsonErrorCode::BadString, tr("four hexadecimal digits are expected behind “\\u”"));
    }
    return true;
}

bool JsonParser::openContainer(JsonKind kind)
{
    if (static_cast<int>(m_open.size()) >= m_limits.depth)
        return fail(JsonErrorCode::TooDeep,
                    tr("objects and arrays stand more than %1 levels inside each other").arg(m_limits.depth));
    const char *const from = m_at++;
    appendCell(from, kind);
    m_open.push_back({m_tree.size() - 1, 0, 0, 0, kind == JsonKind::Object, false});
    return true;
}

void JsonParser::closeContainer()
{
    ++m_at;
    finishCell(m_tree.m_cells[m_open.back().cell]);
    m_open.pop_back();
}

void JsonParser::skipSpace()
{
    while (!atEnd() && (*m_at == ' ' || *m_at == '\n' || *m_at == '\r' || *m_at == '\t'))
        ++m_at;
}

JsonCell &JsonParser::appendCell(const char *from, JsonKind kind)
{
    m_tree.m_cells.emplace_back();
    JsonCell &cell = m_tree.m_cells.back();
    cell.offset = offsetOf(from);
    cell.kind = kind;
    if (!m_open.empty()) {
        const Open &container = m_open.back();
        cell.keyOffset = container.keyOffset;
        cell.keyLength = container.keyLength;
        cell.keyEscaped = container.keyEscaped;
    }
    return cell;
}

void JsonParser::finishCell(JsonCell &cell)
{
    cell.length = offsetOf(m_at) - cell.offset;
    cell.next = m_tree.size();
}

bool JsonParser::fail(JsonErrorCode code, const QString &reason)
{
    m_error.code = code;
    m_error.offset = offsetOf(m_at);
    m_error.place = JsonPlace::of(m_text, m_error.offset);
    m_error.path = currentPath();
    m_error.reason = reason;
    return false;
}

/// For what is wrong outside strings and numbers: the text is either over or goes on with something else.
bool JsonParser::failExpecting(const QString &expected)
{
    if (atEnd())
        return fail(JsonErrorCode::Truncated, tr("the text ends too early; %1").arg(expected));
    return fail(JsonErrorCode::UnexpectedText, tr("%1 cannot stand here; %2").arg(characterHere(), expected));
}

bool JsonParser::failInString()
{
    if (static_cast<uchar>(*m_at) < 0x80)
        return fail(JsonErrorCode::BadString, tr("%1 must be escaped inside a string").arg(characterHere()));
    return fail(JsonErrorCode::BadUtf8, tr("the string holds bytes that are no UTF-8"));
}

QString JsonParser::currentPath() const
{
    JsonPath path;
    for (const Open &container : m_open) {
        const std::string_view inside(m_begin + container.keyOffset + 1,
                                      std::max(container.keyLength, 2u) - 2);
        if (!container.isObject && container.children > 0)
            path.append(container.children - 1);
        else if (container.isObject && container.keyLength > 0)
            path.append(JsonString::decoded(inside));
    }
    return path.text();
}

/// The character the reading stopped at, for a message: in quotes when it can be seen, else by its number.
QString JsonParser::characterHere() const
{
    const int length = JsonString::utf8Length(m_at, m_end);
    const uint byte = static_cast<uchar>(*m_at);
    if (length == 0 || byte < 0x20 || byte == 0x7f)
        return tr("the byte 0x%1").arg(byte, 2, 16, QLatin1Char('0'));
    return tr("“%1”").arg(JsonString::fromUtf8({m_at, static_cast<size_t>(length)}));
}

} // namespace interchange
