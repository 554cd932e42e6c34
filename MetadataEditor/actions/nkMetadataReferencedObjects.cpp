#include "actions/nkMetadataReferencedObjects.h"

#include "actions/nkMetadataEditorKind.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServices/nkdMetadataSet.h>

nkMetadataReferencedObjects::nkMetadataReferencedObjects(const QList<nkdObject> &selection)
{
    for (const nkdObject &object : selection) {
        const nkdMetadataSet set(object);
        if (set.isNull()) {
            add(object);
            continue;
        }
        const QList<nkdSceneObject> carriers = set.getObjects();
        for (const nkdSceneObject &carrier : carriers) {
            add(carrier);
        }
    }
}

void nkMetadataReferencedObjects::add(const nkdObject &object)
{
    if (!m_known.contains(object.getObjectId())) {
        m_known.insert(object.getObjectId());
        sortIn(object);
    }
}

void nkMetadataReferencedObjects::sortIn(const nkdObject &object)
{
    switch (object.getType()) {
    case nkObjectType::Material:
        m_materials.append(nkdMaterial(object));
        return;
    case nkObjectType::MaterialGroup:
        m_materials.append(nkdMaterialGroupNode(object));
        return;
    case nkObjectType::Light:
        m_lights.append(nkdNode(object));
        break;
    case nkObjectType::Camera:
        m_cameras.append(nkdNode(object));
        break;
    case nkObjectType::Sceneplate:
        m_sceneplates.append(nkdNode(object));
        break;
    default:
        break;
    }
    const nkdNode node(object);
    if (!node.isNull()) {
        m_nodes.append(node);
    }
}

void nkMetadataReferencedObjects::selectIn(int kind) const
{
    using namespace nkMetadataEditorKind;
    const auto isWanted = [kind](Kind editor) { return kind == editor || kind == AllEditors; };
    if (isWanted(Scenegraph)) {
        nkScenegraphService::the().setSelection(m_nodes);
        nkScenegraphService::the().scrollToSelected();
    }
    if (isWanted(MaterialEditor)) {
        nkMaterialService::the().setSelection(m_materials, true, false);
    }
    if (isWanted(LightEditor)) {
        nkLightService::the().setSelection(m_lights);
    }
    if (isWanted(CameraEditor)) {
        nkCameraService::the().setSelection(m_cameras);
    }
    if (isWanted(SceneplateEditor)) {
        nkSceneplateService::the().setSelection(m_sceneplates);
    }
}
