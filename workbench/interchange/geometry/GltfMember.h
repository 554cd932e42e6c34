#pragma once

#include <interchange/json/JsonValue.h>

#include <optional>
#include <vector>

namespace interchange {

/// Readers of what stands in a glTF file where numbers and lists should. All of them accept absent values.
namespace GltfMember {

/// A whole number from 0 to 2^53, with or without a point; nothing where there is none.
std::optional<qint64> wholeNumber(const JsonValue &value);
/// The same for the member of an object, with what holds where there is no such member. Nothing where the member
/// is there and is no such number.
std::optional<qint64> wholeNumber(const JsonValue &object, QLatin1String key, qint64 byDefault);
/// An index below `count`; -1 where there is none.
qint32 index(const JsonValue &value, size_t count);
/// A number that a float can hold; nothing where there is none.
std::optional<float> number(const JsonValue &value);
/// Exactly `count` such numbers; false, with `numbers` as they were, where there are none.
bool numbers(const JsonValue &value, float *numbers, int count);
/// The elements of an array; none for everything else.
std::vector<JsonValue> elements(const JsonValue &value);
/// The member of a member: absent where either is.
JsonValue extension(const JsonValue &object, QLatin1String name);

} // namespace GltfMember

} // namespace interchange
