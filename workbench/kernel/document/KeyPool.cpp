#include "KeyPool.h"

#include <QHash>

namespace kernel {

namespace {

/// Seeded: keys come from files, and a file must not be able to choose them so that all collide.
quint32 textHash(const QString &text)
{
    return mixedHash(qHash(text, uint(qGlobalQHashSeed())));
}

} // namespace

quint32 KeyPool::find(const QString &text) const
{
    return m_index.find(textHash(text), [&](quint32 number) { return m_texts[number] == text; });
}

quint32 KeyPool::number(const QString &text)
{
    const quint32 known = find(text);
    if (known != None) {
        return known;
    }
    const quint32 added = quint32(m_texts.size());
    m_texts.push_back(text);
    m_index.insert(added, [this](quint32 number) { return textHash(m_texts[number]); });
    return added;
}

} // namespace kernel
