#pragma once

#include <QString>

/// How texts of any kind and length are drawn in one line of a table cell.
namespace nkMetadataCellText {

/// The longest text a cell lays out, in UTF-16 units; no column is as wide.
constexpr int MaximumLength = 1024;

/// The text with line breaks, tabs and other control characters as blanks, cut at MaximumLength ("…").
QString singleLine(const QString &text);

} // namespace nkMetadataCellText
