#pragma once

#include <nkKernelServices/nkdMetadataSet.h>

#include <QList>

class QModelIndex;

/// The sets that a row of a tree of metadata stands for: a set row for its set, an object row below it for that
/// set too, any other object row for its object set, where that has entries, and the sets assigned to it.
namespace RowSets {

/// @param index column 0 of an nkMetadataTreeModel, or of a proxy over one; others stand for no set
QList<nkdMetadataSet> of(const QModelIndex &index);

} // namespace RowSets
