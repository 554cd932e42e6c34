#pragma once

#include "StringLibrary.h"

#include <QByteArray>

#include <vector>

namespace interchange {

/// A stretch of UTF-8 text that somebody else keeps.
struct WordSpan
{
    const char *begin;
    quint32 size;
};

/// Makes a StringLibrary of words in any order: folds them, sorts them, leaves out what comes twice.
class StringLibraryBuilder
{
public:
    /// @param words valid UTF-8, not empty, without line breaks; together less than 2 GiB. The text has to stay
    ///        for the time of the call.
    static StringLibrary build(const std::vector<WordSpan> &words);
    /// The form in which words are compared: composed, without case.
    static QByteArray folded(const QString &text);

private:
    /// A word on its way: its first folded bytes as a number, which decides most comparisons.
    struct Item
    {
        quint64 prefix;
        quint32 foldedStart;
        quint32 foldedSize;
        quint32 word;
    };

    explicit StringLibraryBuilder(const std::vector<WordSpan> &words) : m_words(words) {}
    void fold();
    void appendFolded(const WordSpan &word);
    void sort();
    bool isBefore(const Item &a, const Item &b) const;
    bool isSameWord(const Item &a, const Item &b) const;
    StringLibrary collect() const;

    const std::vector<WordSpan> &m_words;
    QByteArray m_folded;
    std::vector<Item> m_items;
};

} // namespace interchange
