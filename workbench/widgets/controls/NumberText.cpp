#include "NumberText.h"

#include <QLocale>
#include <QVarLengthArray>

#include <charconv>
#include <cmath>
#include <cstring>

namespace {

/// Decimal exponents of the first digit that are printed without an exponent.
constexpr int lowestPlainExponent = -4;
constexpr int highestPlainExponent = 8;

/// A number taken apart: value = (-1)^negative × 0.d1d2d3… × 10^(exponent + 1).
struct Digits
{
    bool negative = false;
    QVarLengthArray<char, 24> digits;
    int exponent = 0;
};

/// @tparam Number float or double, whose shortest digits are taken; must be finite
template <typename Number>
Digits digitsOf(Number number)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific);
    Digits taken;
    const char *at = buffer;
    taken.negative = *at == '-';
    at += taken.negative ? 1 : 0;
    for (; *at != 'e'; ++at) {
        if (*at != '.')
            taken.digits.append(*at);
    }
    ++at;
    at += *at == '+' ? 1 : 0;
    std::from_chars(at, result.ptr, taken.exponent);
    return taken;
}

/// Collects the characters of one number in place: cells are formatted by the thousand.
class Printer
{
public:
    QString print(const Digits &number)
    {
        const bool plain = number.exponent >= lowestPlainExponent && number.exponent <= highestPlainExponent;
        const int exponent = plain ? number.exponent : 0;
        if (number.negative)
            put('-');
        putDigits(number, -qMax(exponent, 0), 0, exponent);
        const int fractionDigits = number.digits.size() - 1 - exponent;
        if (fractionDigits > 0) {
            m_text[m_size++] = QLocale().decimalPoint();
            putDigits(number, 1, fractionDigits, exponent);
        }
        if (!plain)
            putExponent(number.exponent);
        return QString(m_text, m_size);
    }

private:
    void put(char character) { m_text[m_size++] = QLatin1Char(character); }

    /// Position 0 is the digit of 10^0, 1 the first one after the point.
    void putDigits(const Digits &number, int from, int to, int exponent)
    {
        for (int position = from; position <= to; ++position) {
            const int index = position + exponent;
            put(index >= 0 && index < number.digits.size() ? number.digits[index] : '0');
        }
    }

    void putExponent(int exponent)
    {
        put('e');
        put(exponent < 0 ? '-' : '+');
        const int size = std::abs(exponent);
        if (size >= 100)
            put(char('0' + size / 100));
        put(char('0' + size / 10 % 10));
        put(char('0' + size % 10));
    }

    /// Sign, point, 17 digits and as many zeros as plain notation adds, exponent.
    QChar m_text[40];
    int m_size = 0;
};

/// Walks over a text and says how far it follows the grammar of a number.
class Scanner
{
public:
    explicit Scanner(const QByteArray &text) : m_text(text) {}

    NumberText::State scan()
    {
        skip("+-");
        const int whole = skipDigits();
        const bool point = skip(".");
        const int fraction = point ? skipDigits() : 0;
        if (whole + fraction == 0)
            return atEnd() ? NumberText::State::Beginning : NumberText::State::NoNumber;
        if (!skip("eE"))
            return atEnd() ? NumberText::State::Number : NumberText::State::NoNumber;
        skip("+-");
        const int digits = skipDigits();
        if (!atEnd())
            return NumberText::State::NoNumber;
        return digits > 0 ? NumberText::State::Number : NumberText::State::Beginning;
    }

private:
    bool atEnd() const { return m_at == m_text.size(); }

    bool skip(const char *any)
    {
        const bool found = !atEnd() && std::strchr(any, m_text.at(m_at));
        m_at += found ? 1 : 0;
        return found;
    }

    int skipDigits()
    {
        const int from = m_at;
        while (!atEnd() && m_text.at(m_at) >= '0' && m_text.at(m_at) <= '9')
            ++m_at;
        return m_at - from;
    }

    const QByteArray &m_text;
    int m_at = 0;
};

/// The text with "." as the point and "-" as the minus; what is not ASCII becomes a character no number has.
QByteArray canonical(const QString &text)
{
    const QLocale locale;
    QByteArray plain;
    const QString trimmed = text.trimmed();
    plain.reserve(trimmed.size());
    for (const QChar sign : trimmed) {
        if (sign == locale.decimalPoint())
            plain += '.';
        else if (sign == QChar(0x2212) || sign == locale.negativeSign())
            plain += '-';
        else
            plain += sign.unicode() > 0 && sign.unicode() < 0x80 ? char(sign.unicode()) : '?';
    }
    return plain;
}

} // namespace

QString NumberText::shortest(double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value > 0.0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    // Narrowing beyond the range is undefined in C++, hence the test before the cast: from half a unit above
    // the greatest single on, the nearest single is infinite.
    constexpr double firstBeyondSingle = 0x1.ffffffp127;
    if (std::abs(value) >= firstBeyondSingle)
        return Printer().print(digitsOf(value));
    const float single = float(value);
    const bool vanishes = single == 0.0F && value != 0.0;
    return Printer().print(vanishes ? digitsOf(value) : digitsOf(single));
}

NumberText::State NumberText::read(const QString &text, double *value)
{
    const QByteArray plain = canonical(text);
    const State state = Scanner(plain).scan();
    if (state != State::Number)
        return state;
    const char *first = plain.constData();
    first += *first == '+' ? 1 : 0;
    double number = 0.0;
    const auto result = std::from_chars(first, plain.constData() + plain.size(), number);
    if (result.ec != std::errc())
        return State::NoNumber;
    if (value)
        *value = number;
    return State::Number;
}
