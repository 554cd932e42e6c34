#include "actions/nkMetadataActionTable.h"

#include <QCoreApplication>

/// A text that the catalogue translates; null where there is none.
#define TEXT(text) QT_TRANSLATE_NOOP("nkMetadataActions", text)

namespace nkMetadataAction {

namespace {

const char *const focusModeToolTip = TEXT(
    "<html><head/><body><p><b>Focus Mode:</b><br>The table displays the content of the graph which is "
    "currently in focus. Toggle content in table by using the dual graph function.<br>If Focus Mode is "
    "disabled, the table always displays the content of the current selection, regardless of if it's a "
    "single or dual graph.</p></body></html>");

Icon named(const char *name, const char *category = "")
{
    return {IconSource::Named, name, category};
}

Icon path(const char *path)
{
    return {IconSource::Path, path, ""};
}

Shortcut keys(int keys)
{
    return {keys, QKeySequence::UnknownKey};
}

Shortcut standard(QKeySequence::StandardKey key)
{
    return {0, key};
}

} // namespace

QKeySequence Shortcut::sequence() const
{
    return keys != 0 ? QKeySequence(keys) : QKeySequence(standard);
}

const std::vector<Row> &rows()
{
    // clang-format off
    static const std::vector<Row> table{
        {Rename, TEXT("Rename"), TEXT("Rename Set"), named("RenameReference"), keys(Qt::CTRL | Qt::Key_R)},
        {Copy, TEXT("Copy"),
         TEXT("Copy all selected Set(s) to clipboard"), named("Copy"), standard(QKeySequence::Copy)},
        {Paste, TEXT("Paste"),
         TEXT("Paste all Set(s) from clipboard"), named("Paste"), standard(QKeySequence::Paste)},
        {Duplicate, TEXT("Duplicate"), TEXT("Duplicate Set"), named("Duplicate"), keys(Qt::CTRL | Qt::Key_D)},
        {Delete, TEXT("Delete"), TEXT("Delete Set"), named("Delete"), standard(QKeySequence::Delete)},
        {Lock, TEXT("Lock"), TEXT("Lock Set"), named("Lock"), {}},
        {Unlock, TEXT("Unlock"), TEXT("Unlock Set"), named("Unlock"), {}},
        {RemoveSelectedAssignments, TEXT("Remove Selected Assignments"),
         TEXT("Removes selected metadata assignments"),
         named("RemoveSelectedSet", "MetadataEditor"), keys(Qt::Key_Backspace)},
        {RemoveAllAssignments, TEXT("Remove All Assignments"),
         TEXT("Remove all metadata assignments"), named("RemoveAllSets", "MetadataEditor"), {}},
        {DeleteAllEntries, TEXT("Delete All Entries"),
         TEXT("Delete All Entries"), named("RemoveAllEntries", "MetadataEditor"), {}},
        {DeleteUnassignedSets, TEXT("Delete All Unassigned Sets"), nullptr, named("RemoveUnused"), {}},
        {CreateSet, TEXT("Create Set"), TEXT("Create Set"), named("MetadataSet", "MetadataEditor"), {}},
        {SelectAllEditors, TEXT("All Editors"),
         TEXT("Select All Objects"), named("SelectObjects", "MetadataEditor"), {}},
        {SelectInScenegraph, TEXT("Scenegraph"), TEXT("Select Nodes"), named("GroupNode", "General"), {}},
        {SelectInMaterialEditor, TEXT("Material Editor"),
         TEXT("Select Materials"), named("ModuleMaterialEditor", "General"), {}},
        {SelectInCameraEditor, TEXT("Camera Editor"),
         TEXT("Select Cameras"), named("OrthographicCamera", "General"), {}},
        {SelectInLightEditor, TEXT("Light Editor"),
         TEXT("Select Lights"), named("ModuleLights", "General"), {}},
        {SelectInSceneplateEditor, TEXT("Sceneplate Editor"),
         TEXT("Select Sceneplates"), named("Sceneplate", "General"), {}},
        {FocusMode, TEXT("Focus Mode"), focusModeToolTip, {IconSource::GraphFocused}, {}},
        {SelectAll, TEXT("Select All"), TEXT("Select All"), named("SelectAll", "General"), {}},
        {DeselectAll, TEXT("Deselect All"), TEXT("Deselect All"), named("DeselectAll", "General"), {}},
        {InvertSelection, TEXT("Invert selection"),
         TEXT("Invert selection"), named("SelectInverse", "General"), {}},
        {ModifyAsset, TEXT("Modify"), nullptr, path("MetadataEditor/ModifyAsset.svg"), {}},
        {SaveInAssetManager, TEXT("Save in Asset Manager"),
         TEXT("Save Set in the Asset Manager"), path("MetadataEditor/SaveInAssetManager.svg"), {}},
        {FindInAssetManager, TEXT("Find in Asset Manager"),
         TEXT("Find Set in the Asset Manager"), path("MetadataEditor/FindInAssetManager.svg"), {}},
        {ReloadFromAssetManager, TEXT("Reload from Asset Manager"),
         TEXT("Reload Set from the Asset Manager"), path("MetadataEditor/ReloadFromAssetManager.svg"), {}},
        {RemoveAssetLink, TEXT("Remove Link"),
         TEXT("Remove Sets Link to the Asset Manager"), path("MetadataEditor/RemoveAssetLink.svg"), {}},
        {AssignToLastSelection, TEXT("Last Selection"),
         TEXT("Assign Set(s) to selected Object"), named("AssigntoLastSelection", "MetadataEditor"), {}},
        {AssignToNodes, TEXT("Selected Nodes"),
         TEXT("Assign Set(s) to selected Nodes"), named("GroupNode", "General"), {}},
        {AssignToMaterials, TEXT("Selected Materials"),
         TEXT("Assign Set(s) to selected Materials"), named("ModuleMaterialEditor", "General"), {}},
        {AssignToCameras, TEXT("Selected Cameras"),
         TEXT("Assign Set(s) to selected Cameras"), named("OrthographicCamera", "General"), {}},
        {AssignToLights, TEXT("Selected Lights"),
         TEXT("Assign Set(s) to selected Lights"), named("ModuleLights", "General"), {}},
        {AssignToSceneplates, TEXT("Selected Sceneplates"),
         TEXT("Assign Set(s) to selected Sceneplates"), named("Sceneplate", "General"), {}},
        {LoadMetadata, TEXT("Load Metadata Sets..."),
         TEXT("Load Metadata Sets"), named("LoadMetadata", "MetadataEditor"), {}},
        {SaveMetadata, TEXT("Save Metadata Sets..."),
         TEXT("Save Metadata Sets"), named("SaveMetadata", "MetadataEditor"), {}},
        {CreateStringEntry, TEXT("String"),
         TEXT("Create new String Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateIntegerEntry, TEXT("Integer"),
         TEXT("Create new Integer Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateFloatEntry, TEXT("Float"),
         TEXT("Create new Float Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateBooleanEntry, TEXT("Boolean"),
         TEXT("Create new Boolean Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateTimeEntry, TEXT("Time"),
         TEXT("Create new Time Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateDateEntry, TEXT("Date"),
         TEXT("Create new Date Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateDateTimeEntry, TEXT("Date and Time"),
         TEXT("Create new Date and Time Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateListEntry, TEXT("List"),
         TEXT("Create new List Key / Value entry for this Set"),
         path("MetadataEditor/EntryOnObjectOffNormal.svg"), {}},
        {CreateTagEntry, TEXT("Tag"),
         TEXT("Create new Tag Key / Value entry for this Set"), {IconSource::Tag}, {}},
        {MoveSetEntriesToObject, TEXT("Move Set Entries To Object"),
         TEXT("Move Set Entries To Object"), path("MetadataEditor/MoveObjectEntriestoSetOffNormal.svg"), {}},
        {CreateSetFromObjectEntries, TEXT("Create Set From Object Entries"),
         TEXT("Create Set From Object Entries"),
         path("MetadataEditor/CreateSetfromObjectEntriesOffNormal.svg"), {}},
    };
    // clang-format on
    return table;
}

const std::vector<MenuRow> &menuRows()
{
    static const std::vector<MenuRow> table{
        {AssignMenu,
         TEXT("Assign Sets to"),
         {AssignToLastSelection, AssignToNodes, AssignToMaterials, AssignToCameras, AssignToLights,
          AssignToSceneplates}},
        {CreateEntryMenu,
         TEXT("Create Entry"),
         {CreateStringEntry, CreateIntegerEntry, CreateFloatEntry, CreateBooleanEntry, CreateTimeEntry,
          CreateDateEntry, CreateDateTimeEntry, CreateListEntry, Separator, CreateTagEntry}},
        {SelectObjectsMenu,
         TEXT("Select Objects in"),
         {SelectAllEditors, SelectInScenegraph, SelectInMaterialEditor, SelectInCameraEditor,
          SelectInLightEditor, SelectInSceneplateEditor}},
        {EditMenu, TEXT("Edit"), {Rename, Copy, Paste, Duplicate, Delete, Separator, Lock, Unlock}},
        {AssetMenu,
         TEXT("Asset"),
         {ModifyAsset, SaveInAssetManager, FindInAssetManager, ReloadFromAssetManager, RemoveAssetLink}}};
    return table;
}

} // namespace nkMetadataAction
