#pragma once

#include <QVector>

namespace interchange {

class JsonValue;

/// Keys that come more than once in one object.
namespace JsonKeys {

/// The members of `object` that a later member with the same decoded key hides, in the order of the text. Takes
/// time in proportion to the members; small objects are compared without allocating anything.
QVector<JsonValue> hiddenMembers(const JsonValue &object);

} // namespace JsonKeys

} // namespace interchange
