#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace interchange {

/// The words of a string library, made to be found while a person types. Never changes once it is made, so
/// threads can share it.
///
/// Case does not matter, accents do; accented letters are found however they are composed. Words are kept in
/// the order of their letters, each once; words that differ in case alone are two.
class StringLibrary
{
public:
    StringLibrary() = default;
    /// @param words UTF-8, valid, without line breaks; not empty. They need not stay.
    explicit StringLibrary(std::vector<QByteArray> words);
    explicit StringLibrary(const QStringList &words);

    int size() const { return int(m_starts.size()); }
    /// Whether exactly this word is in it; case matters.
    bool contains(const QString &word) const;
    /// The words to offer for a typed text: those that begin with it, then those that have it anywhere else.
    /// An empty text is the beginning of every word. @return at most limit words
    QStringList completions(const QString &text, int limit) const;

private:
    friend class StringLibraryBuilder;

    QByteArray folded(int word) const;
    QString word(int word) const;
    /// The first word whose folded form is not before text.
    int lowerBound(const QByteArray &text) const;
    void appendInside(const QByteArray &text, int limit, QStringList *found) const;

    /// Each word folded, with a line break behind it, in order; where each begins, here and in m_words.
    QByteArray m_folded;
    std::vector<quint32> m_foldedStarts;
    /// The words as they were written, without anything between.
    QByteArray m_words;
    std::vector<quint32> m_starts;
};

} // namespace interchange
