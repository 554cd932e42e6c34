#include "RowId.h"

#include <limits>

namespace {
/// Reads the canonical decimal text of a 64-bit number: digits only, no leading zero.
/// @return false where text is anything else
bool readNumber(const QString &text, quint64 &number)
{
    if (text.isEmpty() || (text.size() > 1 && text.at(0) == QLatin1Char('0')))
        return false;
    quint64 value = 0;
    for (const QChar character : text) {
        const uint digit = uint(character.unicode()) - uint('0');
        if (digit > 9 || value > (std::numeric_limits<quint64>::max() - digit) / 10)
            return false;
        value = value * 10 + digit;
    }
    number = value;
    return true;
}
} // namespace

RowId::RowId(const QVariant &id)
{
    switch (id.userType()) {
    case QMetaType::UnknownType:
        break;
    case QMetaType::ULongLong: // what nearly every row answers: no detour over text
        setNumber(*static_cast<const quint64 *>(id.constData()));
        break;
    case QMetaType::UInt:
    case QMetaType::ULong:
        setNumber(id.toULongLong());
        break;
    default:
        setText(id.toString());
    }
}

void RowId::setNumber(quint64 number)
{
    m_number = number;
    m_kind = Kind::Number;
}

void RowId::setText(const QString &text)
{
    if (readNumber(text, m_number)) {
        m_kind = Kind::Number;
    } else if (!text.isEmpty()) {
        m_text = text;
        m_kind = Kind::Text;
    }
}

QString RowId::text() const
{
    return isNumber() ? QString::number(m_number) : m_text;
}

bool RowId::isSameAs(const RowId &other) const
{
    if (isNull() || m_kind != other.m_kind)
        return false;
    return isNumber() ? m_number == other.m_number : m_text == other.m_text;
}
