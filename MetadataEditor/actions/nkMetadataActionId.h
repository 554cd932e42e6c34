#pragma once

/// The commands of the editor and the sub-menus that group them, by number.
namespace nkMetadataAction {

/// In the order in which the catalogue holds its actions.
enum Id : int {
    Rename,
    Copy,
    Paste,
    Duplicate,
    Delete,
    Lock,
    Unlock,
    RemoveSelectedAssignments,
    RemoveAllAssignments,
    DeleteAllEntries,
    DeleteUnassignedSets,
    CreateSet,
    SelectAllEditors,
    SelectInScenegraph,
    SelectInMaterialEditor,
    SelectInCameraEditor,
    SelectInLightEditor,
    SelectInSceneplateEditor,
    FocusMode,
    SelectAll,
    DeselectAll,
    InvertSelection,
    ModifyAsset,
    SaveInAssetManager,
    FindInAssetManager,
    ReloadFromAssetManager,
    RemoveAssetLink,
    AssignToLastSelection,
    AssignToNodes,
    AssignToMaterials,
    AssignToCameras,
    AssignToLights,
    AssignToSceneplates,
    LoadMetadata,
    SaveMetadata,
    Separator,
    CreateStringEntry,
    CreateIntegerEntry,
    CreateFloatEntry,
    CreateBooleanEntry,
    CreateTimeEntry,
    CreateDateEntry,
    CreateDateTimeEntry,
    CreateListEntry,
    CreateTagEntry,
    MoveSetEntriesToObject,
    CreateSetFromObjectEntries,
    Count
};

/// In the order in which the catalogue holds its sub-menus.
enum Menu : int { AssignMenu, CreateEntryMenu, SelectObjectsMenu, EditMenu, AssetMenu, MenuCount };

} // namespace nkMetadataAction
