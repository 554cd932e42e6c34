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
    inputs.setsExist = metadata.hasSets();
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
    foldStates(set.getStates());
    if (!hasNode()) {
        kinds |= set.getAssignedKinds();
    }
}

void nkMetadataActionInputs::foldStates(quint32 states)
{
    if (!(states & nkdMetadataSet::ObjectSet)) {
        setsSelected = qMin(setsSelected + 1, 2);
        ((states & nkdMetadataSet::Locked) ? lockedSetSelected : unlockedSetSelected) = true;
    }
    if (states & nkdMetadataSet::Asset) {
        assetSelected = true;
        ((states & nkdMetadataSet::EditedAsset) ? editedAssetSelected : uneditedAssetSelected) = true;
    }
    setWithEntriesSelected = setWithEntriesSelected || (states & nkdMetadataSet::WithEntries);
}
