#include "EditorService.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>

namespace {

using Reveal = EditorService::Reveal;
using Listener = EditorService::Listener;

QList<quint64> idsOf(const QList<nkdNode> &nodes)
{
    QList<quint64> ids;
    ids.reserve(nodes.size());
    for (const nkdNode &node : nodes) {
        ids.append(node.getObjectId());
    }
    return ids;
}

QList<nkdNode> nodesOf(const QList<quint64> &ids)
{
    QList<nkdNode> nodes;
    nodes.reserve(ids.size());
    for (const quint64 id : ids) {
        nodes.append(nkdNode(nkdObject(id)));
    }
    return nodes;
}

QList<quint64> selectedMaterials()
{
    QList<quint64> ids;
    for (const nkMaterialEntryId &entry : nkMaterialService::the().getSelectedMaterials()) {
        ids.append(entry.getObject().getObjectId());
    }
    return ids;
}

void selectMaterials(const QList<quint64> &ids)
{
    QList<nkMaterialEntryId> entries;
    for (const quint64 id : ids) {
        const nkdObject object(id);
        entries.append(object.getType() == nkObjectType::Material
                           ? nkMaterialEntryId(nkdMaterial(object))
                           : nkMaterialEntryId(nkdMaterialGroupNode(object)));
    }
    nkMaterialService::the().setSelection(entries, false, true);
}

EditorService scenegraph()
{
    return {[] { return idsOf(nkScenegraphService::the().getSelectedNodes()); },
            [](const QList<quint64> &ids) { nkScenegraphService::the().setSelection(nodesOf(ids)); },
            [](QObject *context, const Listener &listener) {
                const nkScenegraphService *service = &nkScenegraphService::the();
                QObject::connect(service, &nkScenegraphService::selectionChanged, context,
                                 [listener] { listener(Reveal::Never); });
                QObject::connect(service, &nkScenegraphService::scrollToSelectedRequested, context,
                                 [listener] { listener(Reveal::Always); });
            }};
}

EditorService materials()
{
    return {&selectedMaterials, &selectMaterials, [](QObject *context, const Listener &listener) {
                const auto heard = [listener](const QList<nkMaterialEntryId> &, bool reveal, bool) {
                    listener(reveal ? Reveal::Always : Reveal::Never);
                };
                QObject::connect(&nkMaterialService::the(), &nkMaterialService::selectionChanged, context,
                                 heard);
            }};
}

EditorService lights()
{
    return {[] { return idsOf(nkLightService::the().getSelectedLights()); },
            [](const QList<quint64> &ids) { nkLightService::the().setSelection(nodesOf(ids)); },
            [](QObject *context, const Listener &listener) {
                QObject::connect(&nkLightService::the(), &nkLightService::nodeSelectionChanged, context,
                                 [listener] { listener(Reveal::WhenNew); });
            }};
}

EditorService cameras()
{
    return {[] { return idsOf(nkCameraService::the().getSelectedCameras()); },
            [](const QList<quint64> &ids) { nkCameraService::the().setSelection(nodesOf(ids)); },
            [](QObject *context, const Listener &listener) {
                QObject::connect(&nkCameraService::the(), &nkCameraService::selectionChanged, context,
                                 [listener] { listener(Reveal::WhenNew); });
            }};
}

EditorService sceneplates()
{
    return {[] { return idsOf(nkSceneplateService::the().getSelectedSceneplates()); },
            [](const QList<quint64> &ids) { nkSceneplateService::the().setSelection(nodesOf(ids)); },
            [](QObject *context, const Listener &listener) {
                QObject::connect(&nkSceneplateService::the(), &nkSceneplateService::nodesSelected, context,
                                 [listener] { listener(Reveal::WhenNew); });
            }};
}

} // namespace

EditorService EditorService::of(EditorModule module)
{
    switch (module) {
    case EditorModule::Material:
        return materials();
    case EditorModule::Light:
        return lights();
    case EditorModule::Camera:
        return cameras();
    case EditorModule::Sceneplate:
        return sceneplates();
    case EditorModule::Scenegraph:
        break;
    }
    return scenegraph();
}
