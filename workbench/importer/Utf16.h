#pragma once

#include <optional>
#include <string>

/// Several loaders take text for UTF-8 that other programs write as UTF-16.
namespace Utf16 {

/// The same text in UTF-8; nothing where the bytes do not begin with the mark of UTF-16. Halves of surrogate pairs
/// become U+FFFD.
std::optional<std::string> toUtf8(const std::string &bytes);

} // namespace Utf16
