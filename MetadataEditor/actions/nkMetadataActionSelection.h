#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QList>

/// The host's metadata selection, sorted for the commands. Read anew by every call; in selection order.
namespace nkMetadataActionSelection {

/// The selected sets, object sets included.
QList<nkdMetadataSet> sets();
/// The selected scene objects.
QList<nkdSceneObject> objects();
/// The selected sets and the sets assigned to the selected objects, each once.
QList<nkdMetadataSet> setsToSave();

// The sets among the selected ones that a command of the asset manager applies to.

/// Unlocked assets at rest.
QList<nkdMetadataSet> assetsToModify();
/// Unlocked assets that are being edited.
QList<nkdMetadataSet> assetsToStore();
QList<nkdMetadataSet> assets();
QList<nkdMetadataSet> unlockedAssets();

} // namespace nkMetadataActionSelection
