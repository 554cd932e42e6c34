#include <interchange/json/JsonPath.h>

#include <algorithm>

namespace interchange {

namespace {

constexpr int LongestPath = 160;

bool isIdentifierCharacter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
           || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
           || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('_');
}

bool isIdentifier(const QString &key)
{
    const bool startsWell = !key.isEmpty() && !key.at(0).isDigit();
    return startsWell && std::all_of(key.begin(), key.end(), isIdentifierCharacter);
}

QString escaped(QChar c)
{
    if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
        return QLatin1Char('\\') + QString(c);
    const bool invisible = c.unicode() < 0x20 || c.unicode() == 0x7f || c.isSurrogate();
    return invisible ? QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0')) : QString(c);
}

QString quoted(const QString &key)
{
    QString text(QLatin1Char('"'));
    for (int i = 0; i < key.size(); ++i) {
        const bool pair = key.at(i).isHighSurrogate() && i + 1 < key.size() && key.at(i + 1).isLowSurrogate();
        text += pair ? key.mid(i++, 2) : escaped(key.at(i));
    }
    return text + QLatin1Char('"');
}

} // namespace

JsonPath &JsonPath::append(const QString &key)
{
    if (isIdentifier(key))
        m_text += QLatin1Char('.') + key;
    else
        m_text += QLatin1Char('[') + quoted(key) + QLatin1Char(']');
    return *this;
}

JsonPath &JsonPath::append(quint32 position)
{
    m_text += QLatin1Char('[') + QString::number(position) + QLatin1Char(']');
    return *this;
}

QString JsonPath::shortened(const QString &path)
{
    if (path.size() <= LongestPath)
        return path;
    return path.left(LongestPath / 2) + QStringLiteral(" … ") + path.right(LongestPath / 2);
}

} // namespace interchange
