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

// A key holds the folded text and then the exact one, each as code points in UTF-8, whose bytes have the order
// of the code points (lone surrogates too), and closed by a zero byte. A zero or one in the text is escaped by
// a one.
constexpr char KeyEnd = 0;
constexpr char KeyEscape = 1;

void appendMultiByte(uint codePoint, QByteArray &key)
{
    const auto tail = [&](int shift) { key.append(char(0x80 | ((codePoint >> shift) & 0x3f))); };
    if (codePoint < 0x800) {
        key.append(char(0xc0 | (codePoint >> 6)));
    } else if (codePoint < 0x10000) {
        key.append(char(0xe0 | (codePoint >> 12)));
        tail(6);
    } else {
        key.append(char(0xf0 | (codePoint >> 18)));
        tail(12);
        tail(6);
    }
    tail(0);
}

void appendCodePoint(uint codePoint, QByteArray &key)
{
    if (codePoint >= 0x80) {
        appendMultiByte(codePoint, key);
    } else if (codePoint > uint(KeyEscape)) {
        key.append(char(codePoint));
    } else {
        key.append(KeyEscape);
        key.append(char(codePoint + 1));
    }
}

/// A digit, which only numbers begin with, the number's length and its digits.
void appendNumber(QStringView number, QByteArray &key)
{
    key.append('0');
    const quint32 length = quint32(number.size());
    if (length < 0xff) {
        key.append(char(length));
    } else {
        key.append(char(0xff));
        for (int shift = 24; shift >= 0; shift -= 8)
            key.append(char((length >> shift) & 0xff));
    }
    for (const QChar digit : number)
        key.append(char(digit.unicode()));
}
} // namespace

int compareNaturally(const QString &left, const QString &right)
{
    const int order = compareFolded(Reader(left), Reader(right));
    return order != 0 ? order : compareExactly(Reader(left), Reader(right));
}

void appendNaturalKey(const QString &text, QByteArray &key)
{
    for (Reader reader(text); !reader.atEnd();) {
        if (reader.atDigit())
            appendNumber(reader.number(), key);
        else
            appendCodePoint(QChar::toCaseFolded(reader.next()), key);
    }
    key.append(KeyEnd);
    for (Reader reader(text); !reader.atEnd();)
        appendCodePoint(reader.next(), key);
    key.append(KeyEnd);
}
