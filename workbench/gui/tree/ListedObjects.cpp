#include "ListedObjects.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QVector>

namespace ListedObjects {
namespace {

bool carriesMetadata(const nkdObject &object)
{
    const nkdMetadata metadata(object.getObjectId());
    return metadata.hasObjectEntries() || !metadata.getSets().isEmpty();
}

template <typename Handle>
void visitCarriers(const QList<Handle> &objects, const Visitor &visit)
{
    for (const Handle &object : objects) {
        if (carriesMetadata(object)) {
            visit(object);
        }
    }
}

void pushReversed(QVector<nkdNode> &stack, const QList<nkdNode> &nodes)
{
    for (int i = nodes.size() - 1; i >= 0; --i) {
        stack.append(nodes.at(i));
    }
}

// A stack of its own instead of recursion: files nest nodes thousands deep.
void visitScenegraph(const Visitor &visit)
{
    QVector<nkdNode> stack;
    pushReversed(stack, nkScenegraphService::the().getRootNodes());
    while (!stack.isEmpty()) {
        const nkdNode node = stack.takeLast();
        if (carriesMetadata(node)) {
            visit(node);
        }
        pushReversed(stack, node.getChildren());
    }
}

// Groups are items of the material editor as materials are, and carry metadata like them.
void visitMaterials(const Visitor &visit)
{
    visitCarriers(nkMaterialService::the().getAllGroups(), visit);
    visitCarriers(nkMaterialService::the().getAllMaterials(), visit);
}

template <typename Handle>
void visitAll(const QList<Handle> &objects, const Visitor &visit)
{
    for (const Handle &object : objects) {
        visit(object);
    }
}

} // namespace

void forEach(TreeMode mode, const Visitor &visit)
{
    switch (mode) {
    case TreeMode::Sets:
        return visitAll(nkMetadataService::the().getAllSets(), visit);
    case TreeMode::Scenegraph:
        return visitScenegraph(visit);
    case TreeMode::Materials:
        return visitMaterials(visit);
    case TreeMode::Cameras:
        return visitCarriers(nkCameraService::the().getAllCameras(), visit);
    case TreeMode::Lights:
        return visitCarriers(nkLightService::the().getAllLights(), visit);
    case TreeMode::Sceneplates:
        return visitCarriers(nkSceneplateService::the().getAllSceneplates(), visit);
    case TreeMode::AllObjects:
        visitScenegraph(visit);
        return visitMaterials(visit);
    case TreeMode::LastSelection:
        return visitAll(nkMetadataModuleSelection::the().getLastSelection(), visit);
    }
}

} // namespace ListedObjects
