#include "actions/nkMetadataEditorKind.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>

namespace nkMetadataEditorKind {

namespace {

QList<nkdObject> selectedMaterials()
{
    QList<nkdObject> objects;
    const QList<nkMaterialEntryId> entries = nkMaterialService::the().getSelectedMaterials();
    for (const nkMaterialEntryId &id : entries) {
        const nkMaterialEntry entry = id.getEntry();
        if (id.getEntryType() == nkMaterialEntryId::Group) {
            objects.append(entry.getGroupNode());
        } else {
            objects.append(entry.getMaterial());
        }
    }
    return objects;
}

} // namespace

QList<nkdObject> selectedObjects(int kind)
{
    const auto isWanted = [kind](Kind editor) { return kind == editor || kind == AllEditors; };
    QList<nkdObject> objects;
    if (isWanted(Scenegraph)) {
        objects += nkToObjects(nkScenegraphService::the().getSelectedNodes());
    }
    if (isWanted(MaterialEditor)) {
        objects += selectedMaterials();
    }
    if (isWanted(CameraEditor)) {
        objects += nkToObjects(nkCameraService::the().getSelectedCameras());
    }
    if (isWanted(LightEditor)) {
        objects += nkToObjects(nkLightService::the().getSelectedLights());
    }
    if (isWanted(SceneplateEditor)) {
        objects += nkToObjects(nkSceneplateService::the().getSelectedSceneplates());
    }
    return objects;
}

} // namespace nkMetadataEditorKind
