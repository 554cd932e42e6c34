#include <interchange/json/JsonError.h>

#include <algorithm>

namespace interchange {

namespace {

bool startsCharacter(char byte)
{
    return (static_cast<uchar>(byte) & 0xc0u) != 0x80u;
}

} // namespace

JsonPlace JsonPlace::of(const QByteArray &text, quint32 offset)
{
    JsonPlace place;
    const int end = static_cast<int>(std::min<quint32>(offset, static_cast<quint32>(text.size())));
    for (int i = text.startsWith("\xef\xbb\xbf") ? 3 : 0; i < end; ++i) {
        const char byte = text.at(i);
        const bool firstOfTwo = byte == '\r' && i + 1 < text.size() && text.at(i + 1) == '\n';
        if (byte == '\n' || (byte == '\r' && !firstOfTwo)) {
            ++place.line;
            place.column = 1;
        } else if (startsCharacter(byte) && !firstOfTwo) {
            ++place.column;
        }
    }
    return place;
}

} // namespace interchange
