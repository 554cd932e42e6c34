#include "StringLibrary.h"

#include "StringLibraryBuilder.h"

#include <algorithm>
#include <cstring>

namespace interchange {

namespace {

std::vector<WordSpan> spansOf(const std::vector<QByteArray> &words)
{
    std::vector<WordSpan> spans;
    spans.reserve(words.size());
    for (const QByteArray &word : words) {
        spans.push_back({word.constData(), quint32(word.size())});
    }
    return spans;
}

std::vector<QByteArray> utf8Of(const QStringList &words)
{
    std::vector<QByteArray> texts;
    texts.reserve(size_t(words.size()));
    for (const QString &word : words) {
        texts.push_back(word.toUtf8());
    }
    return texts;
}

} // namespace

StringLibrary::StringLibrary(std::vector<QByteArray> words)
    : StringLibrary(StringLibraryBuilder::build(spansOf(words)))
{}

StringLibrary::StringLibrary(const QStringList &words) : StringLibrary(utf8Of(words)) {}

bool StringLibrary::contains(const QString &text) const
{
    const QByteArray wanted = StringLibraryBuilder::folded(text);
    for (int i = lowerBound(wanted); i < size() && folded(i) == wanted; ++i) {
        if (word(i) == text) {
            return true;
        }
    }
    return false;
}

QStringList StringLibrary::completions(const QString &text, int limit) const
{
    QStringList found;
    const QByteArray wanted = StringLibraryBuilder::folded(text);
    if (wanted.contains('\n')) {
        return found;
    }
    for (int i = lowerBound(wanted); i < size() && found.size() < limit; ++i) {
        if (!folded(i).startsWith(wanted)) {
            break;
        }
        found.append(word(i));
    }
    if (!wanted.isEmpty() && found.size() < limit) {
        appendInside(wanted, limit, &found);
    }
    return found;
}

QByteArray StringLibrary::folded(int word) const
{
    const quint32 start = m_foldedStarts[size_t(word)];
    const bool isLast = word + 1 == size();
    const quint32 end = isLast ? quint32(m_folded.size()) : m_foldedStarts[size_t(word) + 1];
    return QByteArray::fromRawData(m_folded.constData() + start, int(end - start) - 1);
}

QString StringLibrary::word(int word) const
{
    const quint32 start = m_starts[size_t(word)];
    const quint32 end = word + 1 == size() ? quint32(m_words.size()) : m_starts[size_t(word) + 1];
    return QString::fromUtf8(m_words.constData() + start, int(end - start));
}

int StringLibrary::lowerBound(const QByteArray &text) const
{
    int first = 0;
    int count = size();
    while (count > 0) {
        const int half = count / 2;
        const bool isBefore = folded(first + half) < text;
        first = isBefore ? first + half + 1 : first;
        count = isBefore ? count - half - 1 : half;
    }
    return first;
}

void StringLibrary::appendInside(const QByteArray &text, int limit, QStringList *found) const
{
    const char *const begin = m_folded.constData();
    const char *const end = begin + m_folded.size();
    const char *place = begin;
    while (found->size() < limit) {
        place = static_cast<const char *>(
            memmem(place, size_t(end - place), text.constData(), size_t(text.size())));
        if (!place) {
            return;
        }
        const auto behind = std::upper_bound(m_foldedStarts.cbegin(), m_foldedStarts.cend(),
                                             quint32(place - begin));
        const int word = int(behind - m_foldedStarts.cbegin()) - 1;
        if (!folded(word).startsWith(text)) {
            found->append(this->word(word));
        }
        // One hit a word is enough.
        place = behind == m_foldedStarts.cend() ? end : begin + *behind;
    }
}

} // namespace interchange
