#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

namespace interchange {

/// A text that is built from many small pieces: bytes that grow, with room made ahead.
class TextBuffer
{
public:
    int size() const { return m_size; }
    const char *data() const { return m_bytes.constData(); }
    /// The bytes so far, as an array of their own.
    QByteArray bytes() const { return QByteArray(m_bytes.constData(), m_size); }
    /// Empties it and keeps the room.
    void clear() { m_size = 0; }
    /// More was added than a text may hold; what it holds now is worth nothing.
    bool isOverfull() const { return m_isOverfull; }

    void add(std::string_view text);
    /// A JSON string with its quotes: control characters, quotes and backslashes escaped, halves of surrogate
    /// pairs that stand alone as \uXXXX, everything else as UTF-8.
    void addString(const QString &text);
    void addInteger(qint64 number);
    /// The shortest text that gives this number again, always with a point or an exponent. Finite numbers only.
    void addDouble(double number);

private:
    char *room(int size);
    char *addUnits(char *at, const ushort *&unit, const ushort *last, const ushort *end);

    QByteArray m_bytes;
    int m_size = 0;
    bool m_isOverfull = false;
};

} // namespace interchange
