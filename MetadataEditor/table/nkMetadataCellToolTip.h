#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QString>

/// The tool tips of the table's cells: what the column is, then the cell's text.
namespace nkMetadataCellToolTip {

/// The longest value text a tool tip lays out, in UTF-16 units; a longer one is cut and ends in "…". Laying
/// out a megabyte holds the window up for seconds, and no screen shows that much.
constexpr int MaximumTextLength = 4096;

/// Made from the host as it stands now. Values of 21 characters and more come as rich text, so that they
/// wrap; so does any text that Qt would otherwise take for markup. Either way the text itself is escaped.
/// Empty outside columns 0..4.
QString text(const nkdMetadataSet &set, const nkdMetadataEntry &entry, int column);

} // namespace nkMetadataCellToolTip
