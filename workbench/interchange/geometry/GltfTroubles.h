#pragma once

#include <QStringList>

namespace interchange {

/// What could not be read for drawing, as sentences: each once, and no more than a person reads.
class GltfTroubles
{
public:
    /// Sentences that are kept; the others are counted.
    static constexpr int Most = 50;

    void add(const QString &sentence);
    /// The sentences in the order in which they came, and one about those that were only counted.
    QStringList sentences() const;

private:
    QStringList m_sentences;
    int m_others = 0;
};

} // namespace interchange
