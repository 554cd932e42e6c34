#pragma once

#include <kernel/document/EntryValue.h>

#include <QByteArray>

#include <string_view>

namespace interchange {

/// Values of entries as every program reads them in extras: plain JSON values.
///
/// | value | JSON |
/// |---|---|
/// | String | string; a number that is kept as text, a number |
/// | Integer, Float | number, a Float always with point or exponent; "NaN", "Infinity", "-Infinity" |
/// | Boolean | true, false |
/// | Time, Date, DateTime | string in ISO 8601, see MomentText |
/// | List | array of these; a list inside it as string |
/// | tag | null |
namespace PlainValue {

/// The JSON text of the value.
/// @param before the JSON text that stood there: what a list still has of its elements keeps its spelling
QByteArray textOf(const kernel::EntryValue &value, std::string_view before = {});

/// Whether this JSON text is what textOf would write, but for the spelling of numbers and texts and for white
/// space. Numbers with and without point or exponent differ: they are of different types.
bool isTextOf(std::string_view json, const kernel::EntryValue &value);

} // namespace PlainValue

} // namespace interchange
