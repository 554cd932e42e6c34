#include "StringLibraryBuilder.h"

#include <algorithm>
#include <cstring>

namespace interchange {

namespace {

char lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? char(letter + ('a' - 'A')) : letter;
}

/// Copies and folds as long as the text is ASCII. @return whether all of it was
bool foldAscii(const WordSpan &word, char *target)
{
    char bits = 0;
    for (quint32 i = 0; i < word.size; ++i) {
        target[i] = lower(word.begin[i]);
        bits = char(bits | word.begin[i]);
    }
    return (bits & 0x80) == 0;
}

/// The first eight bytes as a number that orders like them.
quint64 prefixOf(const char *text, quint32 size)
{
    quint64 prefix = 0;
    for (quint32 i = 0; i < 8; ++i) {
        prefix = prefix << 8 | (i < size ? uchar(text[i]) : 0);
    }
    return prefix;
}

int compare(const char *a, quint32 sizeA, const char *b, quint32 sizeB)
{
    const int order = std::memcmp(a, b, std::min(sizeA, sizeB));
    return order != 0 ? order : int(sizeA > sizeB) - int(sizeA < sizeB);
}

} // namespace

StringLibrary StringLibraryBuilder::build(const std::vector<WordSpan> &words)
{
    StringLibraryBuilder builder(words);
    builder.fold();
    builder.sort();
    return builder.collect();
}

QByteArray StringLibraryBuilder::folded(const QString &text)
{
    return text.normalized(QString::NormalizationForm_C).toCaseFolded().toUtf8();
}

void StringLibraryBuilder::fold()
{
    int bytes = 0;
    for (const WordSpan &word : m_words) {
        bytes += int(word.size);
    }
    m_folded.reserve(bytes);
    m_items.reserve(m_words.size());
    for (quint32 i = 0; i < m_words.size(); ++i) {
        const auto start = quint32(m_folded.size());
        appendFolded(m_words[i]);
        const quint32 size = quint32(m_folded.size()) - start;
        m_items.push_back({prefixOf(m_folded.constData() + start, size), start, size, i});
    }
}

void StringLibraryBuilder::appendFolded(const WordSpan &word)
{
    const int start = m_folded.size();
    m_folded.resize(start + int(word.size));
    if (!foldAscii(word, m_folded.data() + start)) {
        m_folded.truncate(start);
        m_folded.append(folded(QString::fromUtf8(word.begin, int(word.size))));
    }
}

void StringLibraryBuilder::sort()
{
    const auto before = [this](const Item &a, const Item &b) { return isBefore(a, b); };
    // Libraries are often kept in order by their owners.
    if (!std::is_sorted(m_items.cbegin(), m_items.cend(), before)) {
        std::sort(m_items.begin(), m_items.end(), before);
    }
}

bool StringLibraryBuilder::isBefore(const Item &a, const Item &b) const
{
    if (a.prefix != b.prefix) {
        return a.prefix < b.prefix;
    }
    const int order = compare(m_folded.constData() + a.foldedStart, a.foldedSize,
                              m_folded.constData() + b.foldedStart, b.foldedSize);
    if (order != 0) {
        return order < 0;
    }
    const WordSpan &wordA = m_words[a.word];
    const WordSpan &wordB = m_words[b.word];
    return compare(wordA.begin, wordA.size, wordB.begin, wordB.size) < 0;
}

bool StringLibraryBuilder::isSameWord(const Item &a, const Item &b) const
{
    const WordSpan &wordA = m_words[a.word];
    const WordSpan &wordB = m_words[b.word];
    return a.prefix == b.prefix && compare(wordA.begin, wordA.size, wordB.begin, wordB.size) == 0;
}

StringLibrary StringLibraryBuilder::collect() const
{
    StringLibrary library;
    library.m_folded.reserve(m_folded.size() + int(m_items.size()));
    library.m_words.reserve(m_folded.size());
    library.m_foldedStarts.reserve(m_items.size());
    library.m_starts.reserve(m_items.size());
    const Item *previous = nullptr;
    for (const Item &item : m_items) {
        if (previous && isSameWord(*previous, item)) {
            continue;
        }
        previous = &item;
        library.m_foldedStarts.push_back(quint32(library.m_folded.size()));
        library.m_starts.push_back(quint32(library.m_words.size()));
        library.m_folded.append(m_folded.constData() + item.foldedStart, int(item.foldedSize)).append('\n');
        library.m_words.append(m_words[item.word].begin, int(m_words[item.word].size));
    }
    return library;
}

} // namespace interchange
