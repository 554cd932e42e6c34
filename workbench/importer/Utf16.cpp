#include "Utf16.h"

namespace {

constexpr char32_t Replacement = 0xfffd;

bool isHigh(char32_t unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

bool isLow(char32_t unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}

void append(std::string &text, char32_t letter)
{
    const auto rest = [&text, letter](int shift) { text += char(0x80 | ((letter >> shift) & 0x3f)); };
    if (letter < 0x80) {
        text += char(letter);
    } else if (letter < 0x800) {
        text += char(0xc0 | (letter >> 6));
        rest(0);
    } else if (letter < 0x10000) {
        text += char(0xe0 | (letter >> 12));
        rest(6), rest(0);
    } else {
        text += char(0xf0 | (letter >> 18));
        rest(12), rest(6), rest(0);
    }
}

} // namespace

std::optional<std::string> Utf16::toUtf8(const std::string &bytes)
{
    const bool isLittle = bytes.compare(0, 2, "\xff\xfe") == 0;
    if (!isLittle && bytes.compare(0, 2, "\xfe\xff") != 0)
        return std::nullopt;
    const auto unit = [&bytes, isLittle](size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]),
                   second = static_cast<unsigned char>(bytes[at + 1]);
        return char32_t(isLittle ? first | second << 8 : second | first << 8);
    };
    std::string text;
    for (size_t at = 2; at + 1 < bytes.size(); at += 2) {
        const char32_t one = unit(at);
        if (isHigh(one) && at + 3 < bytes.size() && isLow(unit(at + 2))) {
            append(text, 0x10000 + ((one - 0xd800) << 10) + (unit(at + 2) - 0xdc00));
            at += 2;
        } else {
            append(text, isHigh(one) || isLow(one) ? Replacement : one);
        }
    }
    return text;
}
