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

/// The text with cases folded. Most names are plain ASCII: folded here into a buffer that is used again, while
/// QString makes a new text for every name with a capital.
/// @return a text that is true until the next call
const QString &folded(const QString &text)
{
    thread_local QString buffer;
    buffer.resize(text.size());
    const QChar *const from = text.constData();
    QChar *const to = buffer.data();
    for (int i = 0; i < text.size(); ++i) {
        const ushort unit = from[i].unicode();
        if (unit > 0x7f) {
            buffer = text.toCaseFolded();
            return buffer;
        }
        to[i] = QChar(unit >= 'A' && unit <= 'Z' ? ushort(unit + ('a' - 'A')) : unit);
    }
    return buffer;
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
    const QString &folded = ::folded(text);
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
