#include <interchange/ifc/StepFile.h>

#include <interchange/ifc/StepArguments.h>
#include <interchange/ifc/StepText.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <numeric>

namespace interchange {

namespace {

constexpr std::string_view Start = "ISO-10303-21";
constexpr std::string_view End = "END-ISO-10303-21";
constexpr quint32 TellEvery = 1u << 20;
/// Damaged records named one by one; in a text that is none of these, all would be.
constexpr int NamedDamages = 100;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWordPart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || isDigit(c) || c == '_' || c == '-';
}

} // namespace

bool StepFile::isStep(const QByteArray &firstBytes)
{
    StepFile file;
    file.m_bytes = firstBytes.constData();
    file.m_size = quint32(firstBytes.size());
    file.m_at = firstBytes.startsWith("\xef\xbb\xbf") ? 3 : 0;
    file.skipBlanks();
    return file.isAt(Start);
}

bool StepFile::read(const QByteArray &text, ImportReport &report, const GoOn &goOn)
{
    m_text = text;
    m_bytes = m_text.constData();
    m_size = quint32(m_text.size());
    m_report = &report;
    if (!isStep(text))
        return fail(tr("it does not begin with “ISO-10303-21”, as IFC does"));
    m_at = text.startsWith("\xef\xbb\xbf") ? 3 : 0;
    if (!readHeader())
        return false;
    quint32 tell = 0;
    while (!m_hasEnded) {
        if (m_at >= tell && !goOn(double(m_at) / m_size))
            return false;
        tell = std::max(tell, m_at / TellEvery * TellEvery + TellEvery);
        if (!readStatement())
            return fail(tr("the text ends before its data does"));
    }
    return indexRecords();
}

/// Up to the data.
bool StepFile::readHeader()
{
    while (skipStatement()) {
        skipBlanks();
        const std::string_view name = word();
        const quint32 start = m_at;
        if (name == "DATA" && skipStatement())
            return true;
        if (name != "FILE_SCHEMA" || !skipStatement())
            continue;
        const std::string_view statement(m_bytes + start, m_at - start);
        const size_t from = statement.find('\'');
        const size_t to = statement.find('\'', from + 1);
        if (from != std::string_view::npos && to != std::string_view::npos)
            m_schema = stepText(statement.substr(from + 1, to - from - 1));
        --m_at; // its semicolon, so that the loop finds the next one
    }
    return fail(tr("it has no data"));
}

/// The next record, or what stands between records. False at the end of the text.
bool StepFile::readStatement()
{
    skipBlanks();
    if (at() == '#') {
        const quint32 start = m_at;
        if (readRecord())
            return true;
        noteDamage(start);
        return skipStatement();
    }
    if (isAt(End)) {
        m_hasEnded = true;
        return true;
    }
    const bool isEnd = word() == "ENDSEC";
    const bool isKnown = isEnd || word() == "DATA";
    if (!isKnown && m_at < m_size)
        noteDamage(m_at);
    if (!skipStatement())
        return false;
    skipBlanks();
    // Some programs leave out the last line.
    m_hasEnded = isEnd && m_at >= m_size;
    return true;
}

bool StepFile::readRecord()
{
    Record record;
    const auto number = std::from_chars(m_bytes + m_at + 1, m_bytes + m_size, record.id);
    if (number.ec != std::errc())
        return false;
    m_at = quint32(number.ptr - m_bytes);
    skipBlanks();
    if (at() != '=')
        return false;
    ++m_at;
    skipBlanks();
    record.type = m_at;
    m_at += quint32(word().size());
    skipBlanks();
    record.arguments = m_at;
    // Records of several types at once, which begin with a bracket, are nothing that has a name.
    if (at() != '(')
        return false;
    if (!skipStatement())
        return true;
    record.end = m_at - 1;
    keep(record);
    return true;
}

void StepFile::keep(const Record &record)
{
    quint32 first = record.arguments + 1;
    while (first < record.end && isBlank(m_bytes[first]))
        ++first;
    const bool isNamed = m_bytes[first] == '\'' || m_bytes[first] == '/';
    if (isNamed && record.type != record.arguments)
        m_records.push_back(record);
}

/// To behind the next semicolon that stands in no text and no comment. False where there is none.
bool StepFile::skipStatement()
{
    for (; m_at < m_size; ++m_at) {
        const char c = m_bytes[m_at];
        if (c == ';') {
            ++m_at;
            return true;
        }
        if (c == '\'' || c == '"') {
            const void *end = std::memchr(m_bytes + m_at + 1, c, m_size - m_at - 1);
            m_at = end ? quint32(static_cast<const char *>(end) - m_bytes) : m_size;
        } else if (c == '/' && isAt("/*")) {
            skipBlanks();
            // Not beyond what follows the comment; and past a comment that never ends.
            m_at -= m_at < m_size ? 1 : 0;
        }
        if (m_at >= m_size)
            return false;
    }
    return false;
}

/// And comments.
void StepFile::skipBlanks()
{
    for (;;) {
        while (m_at < m_size && isBlank(m_bytes[m_at]))
            ++m_at;
        if (!isAt("/*"))
            return;
        const size_t end = std::string_view(m_bytes, m_size).find("*/", m_at + 2);
        m_at = end == std::string_view::npos ? m_size : quint32(end + 2);
    }
}

std::string_view StepFile::word() const
{
    quint32 end = m_at;
    while (end < m_size && isWordPart(m_bytes[end]))
        ++end;
    return {m_bytes + m_at, end - m_at};
}

bool StepFile::isAt(std::string_view text) const
{
    return std::string_view(m_bytes, m_size).substr(std::min(m_at, m_size), text.size()) == text;
}

void StepFile::noteDamage(quint32 start)
{
    if (m_report->untouched().size() < NamedDamages)
        m_report->addUntouched(tr("byte %1").arg(start), ImportReason::BrokenRecord);
}

/// The first record with a number is the one that counts.
bool StepFile::indexRecords()
{
    const auto byId = [this](quint32 a, quint32 b) { return m_records[a].id < m_records[b].id; };
    m_byId.resize(m_records.size());
    std::iota(m_byId.begin(), m_byId.end(), 0u);
    if (!std::is_sorted(m_byId.begin(), m_byId.end(), byId))
        std::stable_sort(m_byId.begin(), m_byId.end(), byId);
    const auto isSame = [this](quint32 a, quint32 b) { return m_records[a].id == m_records[b].id; };
    const auto end = std::unique(m_byId.begin(), m_byId.end(), isSame);
    if (end == m_byId.end())
        return true;
    m_byId.erase(end, m_byId.end());
    std::vector<bool> isFirst(m_records.size());
    for (const quint32 place : m_byId)
        isFirst[place] = true;
    std::vector<Record> records;
    for (size_t i = 0; i < m_records.size(); ++i) {
        if (isFirst[i])
            records.push_back(m_records[i]);
        else
            m_report->addUntouched(QStringLiteral("#%1").arg(m_records[i].id), ImportReason::DoubledRecord);
    }
    m_records = std::move(records);
    return indexRecords();
}

qint64 StepFile::find(quint64 id) const
{
    const auto less = [this](quint32 place, quint64 wanted) { return m_records[place].id < wanted; };
    const auto found = std::lower_bound(m_byId.begin(), m_byId.end(), id, less);
    return found != m_byId.end() && m_records[*found].id == id ? qint64(*found) : -1;
}

std::string_view StepFile::type(const Record &record) const
{
    const std::string_view text(m_bytes + record.type, record.arguments - record.type);
    return text.substr(0, text.find_first_of(" \t\r\n/"));
}

std::string_view StepFile::arguments(const Record &record) const
{
    return {m_bytes + record.arguments, record.end - record.arguments};
}

bool StepFile::fail(const QString &reason)
{
    m_error = SceneError::ofFile(reason, tr("copy the file or export it again"));
    return false;
}

} // namespace interchange
