#pragma once

#include <nkKernelServices/nkdObject.h>

#include <QList>

/// The host's editors, by the numbers that nkMetadataModuleSelection answers too.
namespace nkMetadataEditorKind {

enum Kind : int {
    Scenegraph = 0,
    MaterialEditor = 1,
    LightEditor = 2,
    CameraEditor = 3,
    SceneplateEditor = 4,
    AllEditors = 2147483647
};

/// What is selected in the editor of this kind, or in all of them one after the other: scene graph,
/// materials and material groups, cameras, lights, sceneplates. An unknown kind has no objects.
QList<nkdObject> selectedObjects(int kind);

} // namespace nkMetadataEditorKind
