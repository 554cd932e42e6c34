#pragma once

#include <QString>

#include <string_view>

namespace interchange {

/// The inside of JSON strings.
namespace JsonString {

/// Decodes the bytes between the quotes of a string that JsonReader has accepted. Halves of surrogate pairs that
/// stand alone become U+FFFD, because no text of Qt can carry them through; `replaced`, when given, then
/// becomes true and is left alone otherwise.
QString decoded(std::string_view inside, bool *replaced = nullptr);

/// The text of bytes that are UTF-8 and hold no escapes.
inline QString fromUtf8(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

/// How many bytes the UTF-8 sequence at `at` has, which must lie before `end`; 0 when it is none (overlong forms,
/// surrogates, code points beyond U+10FFFF and cut sequences are none).
int utf8Length(const char *at, const char *end);

} // namespace JsonString

} // namespace interchange
