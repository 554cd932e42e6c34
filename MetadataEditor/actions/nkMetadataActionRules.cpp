#include "actions/nkMetadataActionRules.h"

#include "actions/nkMetadataActionInputs.h"

using namespace nkMetadataAction;
using Inputs = nkMetadataActionInputs;

namespace {

bool always(const Inputs &)
{
    return true;
}

bool isSetsMode(const Inputs &in)
{
    return in.setsMode;
}

bool hasSelection(const Inputs &in)
{
    return in.selectionSize > 0;
}

bool hasSet(const Inputs &in)
{
    return in.setsSelected > 0;
}

bool hasLockedSet(const Inputs &in)
{
    return in.lockedSetSelected;
}

bool hasUnlockedSet(const Inputs &in)
{
    return in.unlockedSetSelected;
}

bool hasAsset(const Inputs &in)
{
    return in.assetSelected;
}

bool hasUnlockedAsset(const Inputs &in)
{
    return in.assetSelected && in.unlockedSetSelected;
}

bool canRename(const Inputs &in)
{
    return in.setsSelected == 1 && in.unlockedSetSelected;
}

bool canPaste(const Inputs &in)
{
    return !in.setClipboardEmpty && (in.metadataObjectSelected || (in.setsMode && in.selectionSize == 0));
}

bool canRemoveSelectedAssignments(const Inputs &in)
{
    return in.setsMode ? in.metadataObjectSelected : in.anySetSelected;
}

bool canRemoveAllAssignments(const Inputs &in)
{
    return in.setsMode ? in.anySetSelected : in.metadataObjectSelected;
}

/// In the other editors a node stands for what may hang below it.
template <nkObjectType kind>
bool hasKindOrNode(const Inputs &in)
{
    return in.hasKind(kind) || in.hasNode();
}

} // namespace

namespace nkMetadataActionRules {

const std::vector<ActionRule> &actionRules()
{
    static const std::vector<ActionRule> rules{
        {Rename, canRename},
        {Copy, hasSet},
        {Duplicate, hasSet},
        {Paste, canPaste},
        {Delete, [](const Inputs &in) { return in.setsMode && in.anySetSelected; }},
        {CreateSet, [](const Inputs &in) { return in.setsMode || in.metadataObjectSelected; }},
        {RemoveSelectedAssignments, canRemoveSelectedAssignments},
        {RemoveAllAssignments, canRemoveAllAssignments},
        {SaveMetadata, [](const Inputs &in) { return in.metadataObjectSelected || in.anySetSelected; }},
        {Lock, hasUnlockedSet},
        {Unlock, hasLockedSet},
        {DeleteAllEntries, [](const Inputs &in) { return in.setWithEntriesSelected; }},
        {DeleteUnassignedSets, isSetsMode},
        {SelectAllEditors, hasSelection},
        {SelectInScenegraph, [](const Inputs &in) { return in.hasNode(); }},
        {SelectInMaterialEditor, hasKindOrNode<nkObjectType::Material>},
        {SelectInCameraEditor, hasKindOrNode<nkObjectType::Camera>},
        {SelectInLightEditor, hasKindOrNode<nkObjectType::Light>},
        {SelectInSceneplateEditor, hasKindOrNode<nkObjectType::Sceneplate>},
        {SelectAll, [](const Inputs &in) { return in.setsExist; }},
        {DeselectAll, hasSelection},
        {InvertSelection, hasSelection},
        {AssignToLastSelection, [](const Inputs &in) { return in.editorSelectionExists(); }},
        {AssignToNodes, [](const Inputs &in) { return in.nodesInScenegraph; }},
        {AssignToMaterials, [](const Inputs &in) { return in.materialsInEditor; }},
        {AssignToCameras, [](const Inputs &in) { return in.camerasInEditor; }},
        {AssignToLights, [](const Inputs &in) { return in.lightsInEditor; }},
        {AssignToSceneplates, [](const Inputs &in) { return in.sceneplatesInEditor; }},
        {ModifyAsset, [](const Inputs &in) { return in.uneditedAssetSelected && in.unlockedSetSelected; }},
        {SaveInAssetManager,
         [](const Inputs &in) { return in.editedAssetSelected && in.unlockedSetSelected; }},
        {FindInAssetManager, hasAsset},
        {ReloadFromAssetManager, hasUnlockedAsset},
        {RemoveAssetLink, hasUnlockedAsset},
        {FocusMode, always},
        {LoadMetadata, always},
    };
    return rules;
}

const std::vector<MenuRule> &menuRules()
{
    static const std::vector<MenuRule> rules{
        {EditMenu, [](const Inputs &in) { return in.setsMode || in.selectionSize > 0; }},
        {SelectObjectsMenu, hasSelection},
        {AssetMenu, hasAsset},
        {AssignMenu, [](const Inputs &in) { return in.anySetSelected; }},
    };
    return rules;
}

} // namespace nkMetadataActionRules
