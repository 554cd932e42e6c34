#pragma once

#include <nkKernelServicesGUI/TreeMode.h>

#include <QString>

/// What a tree says, in the person's language, while it shows no rows. Plain text.
namespace nkMetadataTreeHint {

/// The list holds nothing. Needs the catalogue of actions.
QString ofEmptyList(TreeMode mode);
/// The list holds rows, and searches and filters hide them all.
QString ofHiddenRows();

} // namespace nkMetadataTreeHint
