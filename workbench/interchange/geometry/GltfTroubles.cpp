#include <interchange/geometry/GltfTroubles.h>

#include <QCoreApplication>

namespace interchange {

void GltfTroubles::add(const QString &sentence)
{
    if (m_sentences.contains(sentence))
        return;
    if (m_sentences.size() < Most)
        m_sentences.append(sentence);
    else
        ++m_others;
}

QStringList GltfTroubles::sentences() const
{
    if (m_others == 0)
        return m_sentences;
    const QString others = QCoreApplication::translate("GltfTroubles", "And %n more of this kind.", nullptr,
                                                       m_others);
    return m_sentences + QStringList{others};
}

} // namespace interchange
