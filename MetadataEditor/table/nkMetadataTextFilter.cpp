#include "table/nkMetadataTextFilter.h"

#include <QChar>

#include <algorithm>

namespace {

ushort folded(QChar character)
{
    const ushort code = character.unicode();
    if (code < 128) {
        return code >= 'A' && code <= 'Z' ? ushort(code + ('a' - 'A')) : code;
    }
    return character.toCaseFolded().unicode();
}

} // namespace

void nkMetadataTextFilter::setText(const QString &text)
{
    m_text = text;
    m_hasPairs = std::any_of(text.cbegin(), text.cend(), [](QChar each) { return each.isSurrogate(); });
    m_folded.clear();
    for (const QChar each : text) {
        m_folded.append(folded(each));
    }
}

bool nkMetadataTextFilter::isIn(const QString &text) const
{
    if (m_hasPairs) {
        return text.contains(m_text, Qt::CaseInsensitive);
    }
    const auto isSame = [](QChar each, ushort wanted) { return folded(each) == wanted; };
    return std::search(text.cbegin(), text.cend(), m_folded.cbegin(), m_folded.cend(), isSame) != text.cend()
           || m_folded.isEmpty();
}
