#pragma once

#include <QString>

#include <string_view>

namespace interchange {

/// What stands between the quotes of a STEP text, as people read it: doubled quotes and backslashes, `\X2\`, `\X4\`,
/// `\X\`, `\S\` and `\P.\` resolved. Line breaks inside mean nothing there. Bytes beyond ASCII, which the standard
/// does not have and many programs write, are taken for UTF-8 where they are, else for Latin-1. An escape that is
/// none stays as it stands.
QString stepText(std::string_view inside);

} // namespace interchange
