#pragma once

#include <string_view>

namespace interchange {

/// The words of files of metadata sets. They are part of the published layout and never translated.
namespace SetFileNames {

constexpr int Version = 1;
constexpr std::string_view SetsFormat = "metadata-sets";
constexpr std::string_view EntriesFormat = "metadata-entries";

/// The types of entries, in the order of their value types; then those that are none.
constexpr std::string_view Types[] = {"string", "integer",  "float", "boolean", "time",
                                      "date",   "dateTime", "list",  "tag",     "number"};
/// A text that remembers being a number.
constexpr int NumberText = 9;

constexpr std::string_view NotANumber = "NaN";
constexpr std::string_view Infinity = "Infinity";
constexpr std::string_view MinusInfinity = "-Infinity";

} // namespace SetFileNames

} // namespace interchange
