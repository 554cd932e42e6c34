#pragma once

#include <QString>
#include <QVector>

/// A search text in which * stands for any characters and ? for one; it matches anywhere in a text,
/// case-insensitively. Everything else, brackets too, stands for itself.
class Wildcard
{
public:
    Wildcard() = default;
    explicit Wildcard(const QString &pattern);

    /// Whether every text matches.
    bool isEmpty() const { return m_pieces.isEmpty(); }
    bool matches(const QString &text) const;

private:
    struct Piece
    {
        QString folded; // case-folded; ? where hasAny says so
        bool hasAny;
    };

    static int endOf(const Piece &piece, const QString &folded, int from);

    QVector<Piece> m_pieces; // what stands between the *, in order
};
