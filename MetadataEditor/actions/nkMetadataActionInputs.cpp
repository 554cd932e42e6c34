#include "actions/nkMetadataActionInputs.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServices/nkdMetadataSet.h>

namespace {

constexpr quint32 bitOf(nkObjectType type)
{
    return nkMetadataActionInputs::kindBit(type);
}

constexpr quint32 nodeKinds = bitOf(nkObjectType::Node) | bitOf(nkObjectType::Camera)
                              | bitOf(nkObjectType::Light) | bitOf(nkObjectType::Sceneplate)
                              | bitOf(nkObjectType::MaterialGroup);

} // namespace

bool nkMetadataActionInputs::hasNode() const
{
    return (kinds & nodeKinds) != 0;
}

bool nkMetadataActionInputs::editorSelectionExists() const
{
    return nodesInScenegraph || materialsInEditor || camerasInEditor || lightsInEditor || sceneplatesInEditor;
}

nkMetadataActionInputs nkMetadataActionInputs::gather(bool setsMode)
{
    const nkMetadataService &metadata = nkMetadataService::the();
    nkMetadataActionInputs inputs;
    inputs.setsMode = setsMode;
    inputs.setClipboardEmpty = metadata.hasNoCopiedSets();
    inputs.gatherEditors();
    inputs.fold(metadata.getSelection());
    // A selected set exists: the list of all is only made where that is not known.
    inputs.setsExist = inputs.setsSelected > 0 || !metadata.getAllSets().isEmpty();
    return inputs;
}

void nkMetadataActionInputs::gatherEditors()
{
    nodesInScenegraph = !nkScenegraphService::the().getSelectedNodes().isEmpty();
    materialsInEditor = !nkMaterialService::the().getSelectedMaterials().isEmpty();
    camerasInEditor = !nkCameraService::the().getSelectedCameras().isEmpty();
    lightsInEditor = !nkLightService::the().getSelectedLights().isEmpty();
    sceneplatesInEditor = !nkSceneplateService::the().getSelectedSceneplates().isEmpty();
}

void nkMetadataActionInputs::fold(const QList<nkdObject> &selection)
{
    selectionSize = selection.size();
    nkdMetadataSet set;
    for (const nkdObject &object : selection) {
        if (object.getType() == nkObjectType::MetadataSet) {
            // Only the ids: making a handle costs more than asking it.
            static_cast<nkdObject &>(set) = object;
            foldSet(set);
        } else {
            foldObject(object);
        }
    }
}

void nkMetadataActionInputs::foldObject(const nkdObject &object)
{
    const quint32 kind = kindBit(object.getType());
    const bool isKnown = metadataObjectSelected && (hasNode() || (kinds & kind) != 0);
    if (!isKnown && nkMetadataService::the().canHaveMetadata(nkdSceneObject(object))) {
        metadataObjectSelected = true;
        kinds |= kind;
    }
}

void nkMetadataActionInputs::foldSet(const nkdMetadataSet &set)
{
    anySetSelected = true;
    foldLock(set);
    foldAsset(set);
    setWithEntriesSelected = setWithEntriesSelected || !set.getEntries().isEmpty();
    if (!hasNode()) {
        kinds |= set.getAssignedKinds();
    }
}

void nkMetadataActionInputs::foldLock(const nkdMetadataSet &set)
{
    const bool isAllKnown = setsSelected > 1 && lockedSetSelected && unlockedSetSelected;
    if (isAllKnown) {
        return;
    }
    bool &lockState = set.isLocked() ? lockedSetSelected : unlockedSetSelected;
    const bool isNews = setsSelected < 2 || !lockState;
    if (isNews && !set.isObjectSet()) {
        setsSelected = qMin(setsSelected + 1, 2);
        lockState = true;
    }
}

void nkMetadataActionInputs::foldAsset(const nkdMetadataSet &set)
{
    const bool isKnown = editedAssetSelected && uneditedAssetSelected;
    if (isKnown || !set.isAsset()) {
        return;
    }
    assetSelected = true;
    (set.isEditedAsset() ? editedAssetSelected : uneditedAssetSelected) = true;
}
