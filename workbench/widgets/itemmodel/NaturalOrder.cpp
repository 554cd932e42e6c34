#include "NaturalOrder.h"

namespace {
bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Reads a text code point by code point; a lone surrogate stands for itself.
class Reader
{
public:
    explicit Reader(const QString &text) : m_at(text.constData()), m_end(m_at + text.size()) {}

    bool atEnd() const { return m_at == m_end; }
    bool atDigit() const { return isDigit(*m_at); }

    uint next()
    {
        const QChar first = *m_at++;
        if (first.isHighSurrogate() && m_at != m_end && m_at->isLowSurrogate())
            return QChar::surrogateToUcs4(first, *m_at++);
        return first.unicode();
    }

    /// The digits from here, without leading zeros.
    QStringView number()
    {
        while (m_at != m_end && *m_at == QLatin1Char('0'))
            ++m_at;
        const QChar *const first = m_at;
        while (m_at != m_end && isDigit(*m_at))
            ++m_at;
        return QStringView(first, m_at);
    }

private:
    const QChar *m_at;
    const QChar *m_end;
};

int compareNumbers(QStringView left, QStringView right)
{
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    for (int i = 0; i < int(left.size()); ++i) {
        if (left[i] != right[i])
            return left[i] < right[i] ? -1 : 1;
    }
    return 0;
}

int compareFolded(Reader left, Reader right)
{
    while (!left.atEnd() && !right.atEnd()) {
        int order = 0;
        if (left.atDigit() && right.atDigit()) {
            const QStringView leftNumber = left.number();
            order = compareNumbers(leftNumber, right.number());
        } else {
            const uint a = QChar::toCaseFolded(left.next());
            const uint b = QChar::toCaseFolded(right.next());
            order = a < b ? -1 : int(a > b);
        }
        if (order != 0)
            return order;
    }
    return int(right.atEnd()) - int(left.atEnd());
}

int compareExactly(Reader left, Reader right)
{
    while (!left.atEnd() && !right.atEnd()) {
        const uint a = left.next();
        const uint b = right.next();
        if (a != b)
            return a < b ? -1 : 1;
    }
    return int(right.atEnd()) - int(left.atEnd());
}
} // namespace

int compareNaturally(const QString &left, const QString &right)
{
    const int order = compareFolded(Reader(left), Reader(right));
    return order != 0 ? order : compareExactly(Reader(left), Reader(right));
}
