#include "StringLibraryText.h"

#include <algorithm>
#include <cstring>

namespace interchange {

namespace {

constexpr char Mark[] = "\xEF\xBB\xBF";
constexpr int MarkSize = 3;

bool isBlank(char letter)
{
    return letter == ' ' || letter == '\t' || letter == '\r';
}

const char *skipBlanks(const char *begin, const char *end)
{
    return std::find_if_not(begin, end, isBlank);
}

const char *find(const char *begin, const char *end, char letter)
{
    const void *place = std::memchr(begin, letter, size_t(end - begin));
    return place ? static_cast<const char *>(place) : end;
}

/// The bytes of the UTF-8 letter that begins here; 0 where none does.
int letterSize(const uchar *text, const uchar *end)
{
    const auto follows = [&](int index) { return end - text > index && (text[index] & 0xC0) == 0x80; };
    const uchar first = *text;
    if (first < 0x80) {
        const bool isText = first >= 0x20 ? first != 0x7F
                                          : first == '\t' || first == '\n' || first == '\r' || first == '\f';
        return isText ? 1 : 0;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return follows(1) ? 2 : 0;
    }
    if (first >= 0xE0 && first <= 0xEF && follows(1) && follows(2)) {
        const bool isLong = first == 0xE0 && text[1] < 0xA0;
        const bool isSurrogate = first == 0xED && text[1] > 0x9F;
        return isLong || isSurrogate ? 0 : 3;
    }
    if (first >= 0xF0 && first <= 0xF4 && follows(1) && follows(2) && follows(3)) {
        const bool isBeyond = (first == 0xF0 && text[1] < 0x90) || (first == 0xF4 && text[1] > 0x8F);
        return isBeyond ? 0 : 4;
    }
    return 0;
}

} // namespace

StringLibraryFormat stringLibraryFormat(const QString &path)
{
    return path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive) ? StringLibraryFormat::CommaSeparated
                                                                     : StringLibraryFormat::Lines;
}

StringLibraryText::StringLibraryText(const QByteArray &text, StringLibraryFormat format) : m_format(format)
{
    const char *place = text.constData() + (text.startsWith(Mark) ? MarkSize : 0);
    const char *const end = text.constData() + text.size();
    while (place < end) {
        const char *lineEnd = find(place, end, '\n');
        readLine(place, lineEnd);
        place = lineEnd + 1;
    }
}

void StringLibraryText::readLine(const char *begin, const char *end)
{
    const char *first = skipBlanks(begin, end);
    if (first == end || *first == '#') {
        return;
    }
    if (m_format == StringLibraryFormat::CommaSeparated) {
        readFields(first, end);
    } else {
        addWord(first, end);
    }
}

void StringLibraryText::readFields(const char *begin, const char *end)
{
    const char *place = begin;
    while (place < end) {
        place = skipBlanks(place, end);
        if (place < end && *place == '"') {
            place = readQuoted(place + 1, end);
        } else {
            const char *fieldEnd = find(place, end, ',');
            addWord(place, fieldEnd);
            place = fieldEnd;
        }
        ++place;
    }
}

/// @return the comma behind the word, or end
const char *StringLibraryText::readQuoted(const char *begin, const char *end)
{
    QByteArray word;
    const char *place = begin;
    while (place < end) {
        const char *quote = find(place, end, '"');
        word.append(place, int(quote - place));
        place = quote + 1;
        if (place >= end || *place != '"') {
            break;
        }
        word.append('"');
        ++place;
    }
    m_unquoted.push_back(word);
    const QByteArray &kept = m_unquoted.back();
    addWord(kept.constData(), kept.constData() + kept.size());
    return find(std::min(place, end), end, ',');
}

void StringLibraryText::addWord(const char *begin, const char *end)
{
    const char *first = skipBlanks(begin, end);
    while (end > first && isBlank(end[-1])) {
        --end;
    }
    if (end - first > LongestWord) {
        ++m_skipped;
    } else if (end > first) {
        m_words.push_back({first, quint32(end - first)});
    }
}

int StringLibraryText::firstBadLine(const QByteArray &text)
{
    const auto *place = reinterpret_cast<const uchar *>(text.constData());
    const uchar *const end = place + text.size();
    int line = 1;
    while (place < end) {
        const int size = letterSize(place, end);
        if (size == 0) {
            return line;
        }
        line += *place == '\n';
        place += size;
    }
    return 0;
}

} // namespace interchange
