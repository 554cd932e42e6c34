#pragma once

#include "StringLibraryBuilder.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <vector>

namespace interchange {

/// The layout of a library file.
enum class StringLibraryFormat { Lines, CommaSeparated };

/// ".csv" is comma-separated in any case of its letters; everything else has a word on each line.
StringLibraryFormat stringLibraryFormat(const QString &path);

/// The text of a library file taken apart into words.
///
/// Lines end with LF or CRLF. Blanks around a word are no part of it, empty words are left out, and so is a
/// line whose first letter is '#'. Comma-separated words may stand in quotes, which keep commas, blanks and
/// '#'; a quote inside of quotes is written twice; quotes end with their line at the latest. A mark of UTF-8
/// at the beginning is skipped.
class StringLibraryText
{
public:
    /// A longer "word" is no word that anybody would complete: such a line is left out and counted.
    static constexpr quint32 LongestWord = 1000;

    /// @param text has to stay as long as the words are used
    StringLibraryText(const QByteArray &text, StringLibraryFormat format);

    /// Bytes of the text, or of this object where quotes had to be taken off.
    const std::vector<WordSpan> &words() const { return m_words; }
    int skippedWords() const { return m_skipped; }

    /// The number of the first line, from 1 on, that is no UTF-8 text: control characters other than blanks
    /// count as none. 0 where all of it is text.
    static int firstBadLine(const QByteArray &text);

private:
    void readLine(const char *begin, const char *end);
    void readFields(const char *begin, const char *end);
    const char *readQuoted(const char *begin, const char *end);
    void addWord(const char *begin, const char *end);

    std::vector<WordSpan> m_words;
    /// What quoted words say; a deque, because it never moves what it holds.
    std::deque<QByteArray> m_unquoted;
    int m_skipped = 0;
    const StringLibraryFormat m_format;
};

} // namespace interchange
