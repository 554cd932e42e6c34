#pragma once

#include <QString>

class QVariant;

/// Texts of foreign values for lists, boxes and tool tips.
namespace ValueText {

/// A value in one line: numbers in the shortest form that reads back, dates in ISO form, elements of lists
/// joined with ", ". Empty for an invalid value.
QString of(const QVariant &value);

/// The text in one line that a view can draw at once: line breaks and control characters become blanks, and
/// what goes beyond a thousand characters becomes an ellipsis.
QString oneLine(const QString &text);

/// Rich text that shows exactly this text, for places that guess whether a text is rich.
QString literal(const QString &text);

} // namespace ValueText
