#pragma once

#include <QString>

namespace kernel {

/// The natural order of texts, case-insensitively: "part 9" comes before "Part 10". Less than, equal to or
/// greater than 0; 0 only where the texts are the same but for case.
int compareNaturalText(const QString &left, const QString &right);

} // namespace kernel
