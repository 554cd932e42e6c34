#pragma once

#include <QByteArray>
#include <QString>

namespace interchange {

/// Reads the elements of the flat form out of bytes that nobody vouches for. After the first that is not there or
/// makes no sense everything reads as 0 and isSound() says so: callers ask after each loop's step.
class FlatReader
{
public:
    /// @param bytes shared, not copied @param from where to begin
    explicit FlatReader(const QByteArray &bytes, int from = 0) : m_bytes(bytes), m_at(from) {}

    quint8 byte() { return value<quint8>(); }
    quint32 word() { return value<quint32>(); }
    quint64 longWord() { return value<quint64>(); }
    float single();
    /// A single that is neither infinite nor no number.
    float finite();
    double number();
    /// A truth, 0 or 1.
    bool flag();
    /// One of 0 to `last`.
    quint8 choice(quint8 last);
    /// An index of a list with `count` elements, or -1.
    qint32 index(quint32 count);
    /// The number of elements of a list.
    /// @param limit more are refused @param smallest bytes that an element takes at least: so many must be there
    quint32 count(quint32 limit, quint32 smallest);
    /// A text; what is no UTF-8 becomes U+FFFD. @param isBroken set where that was so; may be null
    QString text(bool *isBroken = nullptr);
    /// This many singles, all finite.
    template <typename Container>
    void finites(Container &into, quint32 count);
    /// This many indices, all below `end`.
    template <typename Container>
    void indices(Container &into, quint32 count, quint32 end);

    bool isSound() const { return m_isSound; }
    /// Says that what was read makes no sense.
    void fail() { m_isSound = false; }
    int position() const { return m_at; }
    int remaining() const { return m_bytes.size() - m_at; }

private:
    template <typename Unsigned>
    Unsigned value();
    const uchar *take(quint64 size);

    QByteArray m_bytes;
    int m_at = 0;
    bool m_isSound = true;
};

template <typename Container>
void FlatReader::finites(Container &into, quint32 count)
{
    into.reserve(count);
    for (quint32 i = 0; i < count && m_isSound; ++i)
        into.push_back(finite());
}

template <typename Container>
void FlatReader::indices(Container &into, quint32 count, quint32 end)
{
    into.reserve(count);
    for (quint32 i = 0; i < count && m_isSound; ++i) {
        into.push_back(word());
        if (into.back() >= end)
            fail();
    }
}

} // namespace interchange
