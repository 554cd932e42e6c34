#pragma once

#include "EntryValue.h"

#include <optional>

namespace kernel {

/// Deepest nesting of lists that an entry takes; a list is depth 1.
constexpr int DeepestList = 64;

/// What an entry of this type holds when nobody has set it: "", 0, 0.0, false, 00:00, today, today 00:00, an
/// empty list; a tag for type 8.
NK_KERNEL_SERVICES_EXPORT EntryValue defaultValue(nkMetadataTypes::ValueType type);

/// value as an entry of this type holds it; nothing where it cannot be converted.
///
/// Numbers and texts convert into each other where the text is a number (C locale, blanks around it
/// ignored); fractions are rounded for Integer, and what lies outside 32 bits is refused. true and false
/// count as 1 and 0, and as the texts "true" and "false"; other numbers are true. Dates and times convert
/// from and to ISO 8601 text, a date to midnight, a date-time to its date or time. A list gives its texts
/// joined with ", ", a text with ", " in it gives a list of its pieces, and any other value a list of one; a
/// list of one element converts like that element.
/// @param type 0..7
NK_KERNEL_SERVICES_EXPORT std::optional<EntryValue> convertedValue(const QVariant &value,
                                                                   nkMetadataTypes::ValueType type);

/// value as an entry of the type that fits it best holds it; nothing for values that no type holds. A whole
/// number beyond 32 bits becomes a text that remembers being a number.
NK_KERNEL_SERVICES_EXPORT std::optional<EntryValue> bestFittingValue(const QVariant &value);

/// The text that stands for a value in a String entry, with "." as decimal point in every locale: numbers in
/// their shortest exact form, dates and times in ISO form, lists joined with ", ". Empty for an invalid value.
NK_KERNEL_SERVICES_EXPORT QString valueText(const QVariant &value);

/// Whether text is a number as JSON writes it.
NK_KERNEL_SERVICES_EXPORT bool isNumberLiteral(const QString &text);

} // namespace kernel
