#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>

namespace {

enum Module : int { Scenegraph = 0, Material = 1, Light = 2, Camera = 3, Sceneplate = 4 };

QList<nkdObject> selectedMaterials()
{
    QList<nkdObject> objects;
    for (const nkMaterialEntryId &entry : nkMaterialService::the().getSelectedMaterials()) {
        objects.append(entry.getObject());
    }
    return objects;
}

} // namespace

nkMetadataModuleSelection::nkMetadataModuleSelection() = default;

nkMetadataModuleSelection &nkMetadataModuleSelection::the()
{
    static nkMetadataModuleSelection selection;
    return selection;
}

void nkMetadataModuleSelection::setLastSelectionModule(int module)
{
    if (module < Scenegraph || module > Sceneplate) {
        return;
    }
    m_module = module;
    Q_EMIT lastSelectionModuleChanged(module);
}

QList<nkdObject> nkMetadataModuleSelection::getLastSelection() const
{
    switch (m_module) {
    case Material:
        return selectedMaterials();
    case Light:
        return nkToObjects(nkLightService::the().getSelectedLights());
    case Camera:
        return nkToObjects(nkCameraService::the().getSelectedCameras());
    case Sceneplate:
        return nkToObjects(nkSceneplateService::the().getSelectedSceneplates());
    default:
        return nkToObjects(nkScenegraphService::the().getSelectedNodes());
    }
}
