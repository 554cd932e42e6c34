#pragma once

#include <QColor>
#include <QVariant>

#include <optional>
#include <vector>

namespace kernel {

/// The first count elements of a list value as numbers; nothing where the value is no list, is shorter, or
/// one of them is no number. More elements are accepted for count 3 (a vector and what follows it), not for
/// others.
std::optional<std::vector<double>> numbersOf(const QVariant &list, int count);

/// The colour of a list of three or four numbers 0..1 (red, green, blue, alpha); otherwise invalid.
QColor colorOf(const QVariant &list);

} // namespace kernel
