#include "Wildcard.h"

#include <QStringList>

namespace {
constexpr QLatin1Char AnyOne('?');

/// Whether the piece, with its ?, stands at a place of text. @return where it ends there; -1: it does not
int endAt(const QString &piece, const QString &text, int at)
{
    for (const QChar expected : piece) {
        if (at >= text.size())
            return -1;
        const QChar found = text.at(at++);
        if (expected == AnyOne) { // one character, which may be two code units
            if (found.isHighSurrogate() && at < text.size() && text.at(at).isLowSurrogate())
                ++at;
        } else if (expected != found) {
            return -1;
        }
    }
    return at;
}
} // namespace

Wildcard::Wildcard(const QString &pattern)
{
    const QStringList pieces = pattern.toCaseFolded().split(QLatin1Char('*'), Qt::SkipEmptyParts);
    for (const QString &piece : pieces)
        m_pieces.append({piece, piece.contains(AnyOne)});
}

bool Wildcard::matches(const QString &text) const
{
    if (m_pieces.isEmpty())
        return true;
    const QString folded = text.toCaseFolded();
    int at = 0;
    for (const Piece &piece : m_pieces) {
        at = endOf(piece, folded, at);
        if (at < 0)
            return false;
    }
    return true;
}

/// Where the first occurrence of a piece ends; the first leaves most room for the pieces after it.
int Wildcard::endOf(const Piece &piece, const QString &folded, int from)
{
    if (!piece.hasAny) {
        const int at = folded.indexOf(piece.folded, from);
        return at < 0 ? -1 : at + piece.folded.size();
    }
    for (int at = from; at < folded.size(); ++at) {
        const int end = endAt(piece.folded, folded, at);
        if (end >= 0)
            return end;
    }
    return -1;
}
