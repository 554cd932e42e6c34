#include <interchange/json/JsonString.h>

namespace interchange {

namespace {

ushort hexDigits(const char *at)
{
    uint unit = 0;
    for (int i = 0; i < 4; ++i) {
        const uint c = static_cast<uchar>(at[i]);
        unit = unit * 16 + (c <= '9' ? c - '0' : (c | 0x20u) - 'a' + 10);
    }
    return static_cast<ushort>(unit);
}

QChar shortEscape(char letter)
{
    switch (letter) {
    case 'b':
        return QLatin1Char('\b');
    case 'f':
        return QLatin1Char('\f');
    case 'n':
        return QLatin1Char('\n');
    case 'r':
        return QLatin1Char('\r');
    case 't':
        return QLatin1Char('\t');
    default:
        return QLatin1Char(letter); // quote, slash and backslash stand for themselves
    }
}

/// Replaces every lone half of a surrogate pair; says whether there was one.
bool replaceLoneSurrogates(QString &text)
{
    bool found = false;
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool pair = text.at(i).isHighSurrogate() && i + 1 < text.size()
                          && text.at(i + 1).isLowSurrogate();
        if (pair) {
            ++i;
        } else {
            text[i] = QChar(QChar::ReplacementCharacter);
            found = true;
        }
    }
    return found;
}

bool isContinuation(const char *at, const char *end)
{
    return at < end && (static_cast<uchar>(*at) & 0xc0u) == 0x80u;
}

/// The smallest second byte that is no overlong form, for lead bytes that have such a limit.
uchar smallestSecond(uchar lead)
{
    return lead == 0xe0 ? 0xa0 : lead == 0xf0 ? 0x90 : 0x80;
}

/// The largest second byte that is neither a surrogate nor beyond U+10FFFF.
uchar largestSecond(uchar lead)
{
    return lead == 0xed ? 0x9f : lead == 0xf4 ? 0x8f : 0xbf;
}

} // namespace

QString JsonString::decoded(std::string_view inside, bool *replaced)
{
    QString text;
    text.reserve(static_cast<int>(inside.size()));
    const char *at = inside.data();
    const char *const end = at + inside.size();
    while (at < end) {
        const char *plain = at;
        while (at < end && *at != '\\')
            ++at;
        text += fromUtf8({plain, static_cast<size_t>(at - plain)});
        if (at == end)
            break;
        const bool unicode = at[1] == 'u';
        text += unicode ? QChar(hexDigits(at + 2)) : shortEscape(at[1]);
        at += unicode ? 6 : 2;
    }
    if (replaceLoneSurrogates(text) && replaced)
        *replaced = true;
    return text;
}

int JsonString::utf8Length(const char *at, const char *end)
{
    const uchar lead = static_cast<uchar>(*at);
    if (lead < 0x80)
        return 1;
    if (lead < 0xc2 || lead > 0xf4 || !isContinuation(at + 1, end))
        return 0;
    if (lead < 0xe0)
        return 2;
    const uchar second = static_cast<uchar>(at[1]);
    if (second < smallestSecond(lead) || second > largestSecond(lead) || !isContinuation(at + 2, end))
        return 0;
    if (lead < 0xf0)
        return 3;
    return isContinuation(at + 3, end) ? 4 : 0;
}

} // namespace interchange
