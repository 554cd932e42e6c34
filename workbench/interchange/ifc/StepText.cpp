#include <interchange/ifc/StepText.h>

#include <QByteArray>
#include <QTextCodec>

#include <algorithm>
#include <charconv>

namespace interchange {

namespace {

QString plainText(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    return text.contains(QChar::ReplacementCharacter) ? QString::fromLatin1(bytes) : text;
}

/// The number that these hexadecimal digits are; false where they are none.
bool hexNumber(std::string_view digits, uint &number)
{
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return read.ec == std::errc() && read.ptr == digits.data() + digits.size();
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// Halves of surrogate pairs that stand alone become replacement characters.
QString withoutHalves(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size()
                            && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else if (text.at(i).isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

/// Walks through one text.
class Decoder
{
public:
    explicit Decoder(std::string_view rest) : m_rest(rest) {}

    QString decode()
    {
        while (!m_rest.empty())
            step();
        flush();
        return m_text;
    }

private:
    void step()
    {
        const char c = m_rest.front();
        if (c == '\\' && escape())
            return;
        if (c == '\'' && startsWith(m_rest, "''"))
            m_rest.remove_prefix(1);
        if (c != '\n' && c != '\r')
            m_plain.append(c);
        m_rest.remove_prefix(1);
    }

    bool escape()
    {
        if (startsWith(m_rest, "\\\\")) {
            m_plain.append('\\');
            m_rest.remove_prefix(2);
            return true;
        }
        if (startsWith(m_rest, "\\X2\\"))
            return units(4);
        if (startsWith(m_rest, "\\X4\\"))
            return units(8);
        return startsWith(m_rest, "\\X\\") ? latin1() : startsWith(m_rest, "\\S\\") ? upperHalf() : page();
    }

    /// A run of code units, up to its end mark.
    bool units(size_t digits)
    {
        const size_t end = m_rest.find("\\X0\\");
        if (end == std::string_view::npos || (end - 4) % digits != 0)
            return false;
        QString text;
        for (size_t at = 4; at < end; at += digits) {
            uint unit = 0;
            if (!hexNumber(m_rest.substr(at, digits), unit))
                return false;
            if (digits == 4)
                text.append(QChar(ushort(unit)));
            else
                text.append(QString::fromUcs4(&unit, 1));
        }
        return take(end + 4, withoutHalves(text));
    }

    bool latin1()
    {
        uint code = 0;
        return m_rest.size() >= 5 && hexNumber(m_rest.substr(3, 2), code) && take(5, QChar(ushort(code)));
    }

    /// The second half of the page, by its place in the first.
    bool upperHalf()
    {
        const char c = m_rest.size() >= 4 ? m_rest[3] : '\0';
        if (c < 0x20 || c > 0x7e)
            return false;
        const char byte = char(uchar(c) | 0x80u);
        return take(4, m_page ? m_page->toUnicode(&byte, 1) : QString(QChar(uchar(byte))));
    }

    /// Which part of ISO 8859 the page is, "A" being the first.
    bool page()
    {
        if (m_rest.size() < 4 || m_rest[1] != 'P' || m_rest[3] != '\\' || m_rest[2] < 'A' || m_rest[2] > 'I')
            return false;
        m_page = QTextCodec::codecForName("ISO 8859-" + QByteArray::number(m_rest[2] - 'A' + 1));
        return take(4, QString());
    }

    bool take(size_t size, const QString &text)
    {
        flush();
        m_text += text;
        m_rest.remove_prefix(size);
        return true;
    }

    void flush()
    {
        m_text += plainText(m_plain);
        m_plain.clear();
    }

    std::string_view m_rest;
    QByteArray m_plain; ///< bytes that stand for themselves
    QString m_text;
    const QTextCodec *m_page = nullptr;
};

} // namespace

QString stepText(std::string_view inside)
{
    const auto isPlain = [](char c) { return c >= 0x20 && c < 0x7f && c != '\\' && c != '\''; };
    if (std::all_of(inside.begin(), inside.end(), isPlain))
        return QString::fromLatin1(inside.data(), int(inside.size()));
    return Decoder(inside).decode();
}

} // namespace interchange
