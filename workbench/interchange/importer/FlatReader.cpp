#include <interchange/importer/FlatReader.h>

#include <interchange/importer/ImportLimits.h>

#include <QTextCodec>
#include <QtEndian>

#include <cmath>
#include <cstring>

namespace interchange {

namespace {

constexpr int MibOfUtf8 = 106;

} // namespace

const uchar *FlatReader::take(quint64 size)
{
    if (!m_isSound || size > quint64(remaining())) {
        fail();
        return nullptr;
    }
    const auto *bytes = reinterpret_cast<const uchar *>(m_bytes.constData()) + m_at;
    m_at += int(size);
    return bytes;
}

template <typename Unsigned>
Unsigned FlatReader::value()
{
    const uchar *bytes = take(sizeof(Unsigned));
    return bytes ? qFromLittleEndian<Unsigned>(bytes) : Unsigned(0);
}

template quint8 FlatReader::value<quint8>();
template quint32 FlatReader::value<quint32>();
template quint64 FlatReader::value<quint64>();

float FlatReader::single()
{
    const quint32 bits = word();
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

float FlatReader::finite()
{
    const float value = single();
    if (std::isfinite(value))
        return value;
    fail();
    return 0;
}

double FlatReader::number()
{
    const quint64 bits = longWord();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

bool FlatReader::flag()
{
    return choice(1) == 1;
}

quint8 FlatReader::choice(quint8 last)
{
    const quint8 chosen = byte();
    if (chosen <= last)
        return chosen;
    fail();
    return 0;
}

qint32 FlatReader::index(quint32 count)
{
    const auto index = qint32(word());
    if (index >= -1 && (index < 0 || quint32(index) < count))
        return index;
    fail();
    return -1;
}

quint32 FlatReader::count(quint32 limit, quint32 smallest)
{
    const quint32 count = word();
    if (count <= limit && quint64(count) * smallest <= quint64(remaining()) && m_isSound)
        return count;
    fail();
    return 0;
}

QString FlatReader::text(bool *isBroken)
{
    const quint32 size = count(importlimits::TextBytes, 1);
    const uchar *bytes = take(size);
    if (!bytes)
        return QString();
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QString text = QTextCodec::codecForMib(MibOfUtf8)->toUnicode(reinterpret_cast<const char *>(bytes),
                                                                 int(size), &state);
    // What is missing of a letter at the end is kept for a next stretch, which never comes.
    if (state.remainingChars > 0)
        text.append(QChar(QChar::ReplacementCharacter));
    if (isBroken && (state.invalidChars > 0 || state.remainingChars > 0))
        *isBroken = true;
    return text;
}

} // namespace interchange
