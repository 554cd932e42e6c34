#pragma once

#include <nkKernelServices/nkdMetadataSet.h>

#include <QList>
#include <QStringList>

/// The sets of the metadata selection, as the asset panel looks at them.
namespace PublishableSets {

/// The selected shared sets that are no assets yet, in order of selection.
QList<nkdMetadataSet> selected();
bool isAnySelected();
/// The assets that the sets are linked to.
QStringList assetsOf(const QList<nkdMetadataSet> &sets);
/// Makes the sets the metadata selection; does nothing where there are none.
void select(const QList<nkdMetadataSet> &sets);

} // namespace PublishableSets
