#include "actions/nkMetadataActionInputs.h"
#include "actions/nkMetadataActionRules.h"

#include <TestMain.h>

#include <functional>

using namespace nkMetadataAction;
using Inputs = nkMetadataActionInputs;
using Change = std::function<void(Inputs &)>;

Q_DECLARE_METATYPE(Change)

namespace {

Change kind(nkObjectType type)
{
    return [type](Inputs &in) { in.kinds = Inputs::kindBit(type); };
}

void selection(Inputs &in)
{
    in.selectionSize = 1;
}

void setsMode(Inputs &in)
{
    in.setsMode = true;
}

void object(Inputs &in)
{
    in.metadataObjectSelected = true;
}

void anySet(Inputs &in)
{
    in.anySetSelected = true;
}

void unlockedSet(Inputs &in)
{
    in.setsSelected = 1;
    in.unlockedSetSelected = true;
}

void lockedSet(Inputs &in)
{
    in.setsSelected = 1;
    in.lockedSetSelected = true;
}

void twoSets(Inputs &in)
{
    in.setsSelected = 2;
    in.unlockedSetSelected = true;
    in.lockedSetSelected = true;
}

void clipboard(Inputs &in)
{
    in.setClipboardEmpty = false;
}

void editedAsset(Inputs &in)
{
    in.assetSelected = true;
    in.editedAssetSelected = true;
}

void assetAtRest(Inputs &in)
{
    in.assetSelected = true;
    in.uneditedAssetSelected = true;
}

Change both(const Change &first, const Change &second)
{
    return [first, second](Inputs &in) {
        first(in);
        second(in);
    };
}

void nothing(Inputs &) {}

} // namespace

/// Which inputs enable which action: every rule met and not met.
class TestRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enables_actions_data();
    void enables_actions()
    {
        QFETCH(int, action);
        QFETCH(Change, change);
        QFETCH(bool, enabled);
        Inputs inputs;
        change(inputs);
        for (const nkMetadataActionRules::ActionRule &rule : nkMetadataActionRules::actionRules()) {
            if (rule.id == action) {
                QCOMPARE(rule.isEnabled(inputs), enabled);
                return;
            }
        }
        QFAIL("The action has no rule");
    }

    void enables_menus_data();
    void enables_menus()
    {
        QFETCH(int, menu);
        QFETCH(Change, change);
        QFETCH(bool, enabled);
        Inputs inputs;
        change(inputs);
        for (const nkMetadataActionRules::MenuRule &rule : nkMetadataActionRules::menuRules()) {
            if (rule.menu == menu) {
                QCOMPARE(rule.isEnabled(inputs), enabled);
                return;
            }
        }
        QFAIL("The menu has no rule");
    }

    void rules_every_action_but_entry_types_and_hidden_ones()
    {
        QSet<int> ruled;
        for (const nkMetadataActionRules::ActionRule &rule : nkMetadataActionRules::actionRules()) {
            QVERIFY(!ruled.contains(rule.id));
            ruled.insert(rule.id);
        }
        for (int id = 0; id < Count; ++id) {
            QCOMPARE(ruled.contains(id), id < Separator);
        }
    }

    void every_editor_without_a_selection_leaves_nothing_to_assign_to()
    {
        QVERIFY(!Inputs().editorSelectionExists());
        for (bool Inputs::*member :
             {&Inputs::nodesInScenegraph, &Inputs::materialsInEditor, &Inputs::camerasInEditor,
              &Inputs::lightsInEditor, &Inputs::sceneplatesInEditor}) {
            Inputs inputs;
            inputs.*member = true;
            QVERIFY(inputs.editorSelectionExists());
        }
    }

private:
    struct Case
    {
        const char *name;
        int subject;
        Change change;
        bool enabled;
    };

    static void addRows(const char *subject, const QVector<Case> &cases)
    {
        QTest::addColumn<int>(subject);
        QTest::addColumn<Change>("change");
        QTest::addColumn<bool>("enabled");
        for (const Case &row : cases) {
            QTest::newRow(row.name) << row.subject << row.change << row.enabled;
        }
    }
};

void TestRules::enables_actions_data()
{
    const auto on = [](bool Inputs::*member) -> Change {
        return [member](Inputs &in) { in.*member = true; };
    };
    const Change pasteable = both(setsMode, clipboard);
    addRows(
        "action",
        {{"rename: one unlocked set", Rename, unlockedSet, true},
         {"rename: a locked one", Rename, lockedSet, false},
         {"rename: two", Rename, twoSets, false},
         {"rename: none", Rename, nothing, false},
         {"copy: a set", Copy, lockedSet, true},
         {"copy: an object set alone", Copy, anySet, false},
         {"duplicate: a set", Duplicate, unlockedSet, true},
         {"duplicate: an object set alone", Duplicate, anySet, false},
         {"paste: onto an object", Paste, both(clipboard, both(object, selection)), true},
         {"paste: into the list of sets", Paste, pasteable, true},
         {"paste: over a selected set", Paste, both(pasteable, selection), false},
         {"paste: outside the list of sets", Paste, clipboard, false},
         {"paste: empty clipboard", Paste, both(setsMode, object), false},
         {"delete: a set in the list of sets", Delete, both(setsMode, anySet), true},
         {"delete: elsewhere", Delete, both(anySet, unlockedSet), false},
         {"delete: no set", Delete, setsMode, false},
         {"create set: list of sets", CreateSet, setsMode, true},
         {"create set: an object", CreateSet, object, true},
         {"create set: neither", CreateSet, anySet, false},
         {"remove selected: an object below a set", RemoveSelectedAssignments, both(setsMode, object), true},
         {"remove selected: a set in the list of sets", RemoveSelectedAssignments, both(setsMode, anySet),
          false},
         {"remove selected: a set below an object", RemoveSelectedAssignments, anySet, true},
         {"remove selected: an object in its list", RemoveSelectedAssignments, object, false},
         {"remove all: a set in the list of sets", RemoveAllAssignments, both(setsMode, anySet), true},
         {"remove all: an object in the list of sets", RemoveAllAssignments, both(setsMode, object), false},
         {"remove all: an object in its list", RemoveAllAssignments, object, true},
         {"remove all: a set below an object", RemoveAllAssignments, anySet, false},
         {"save: an object", SaveMetadata, object, true},
         {"save: a set", SaveMetadata, anySet, true},
         {"save: neither", SaveMetadata, selection, false},
         {"lock: an unlocked set", Lock, unlockedSet, true},
         {"lock: a locked set", Lock, lockedSet, false},
         {"lock: both", Lock, twoSets, true},
         {"unlock: a locked set", Unlock, lockedSet, true},
         {"unlock: an unlocked set", Unlock, unlockedSet, false},
         {"unlock: both", Unlock, twoSets, true},
         {"delete entries: some", DeleteAllEntries, on(&Inputs::setWithEntriesSelected), true},
         {"delete entries: none", DeleteAllEntries, unlockedSet, false},
         {"delete unassigned: list of sets", DeleteUnassignedSets, setsMode, true},
         {"delete unassigned: elsewhere", DeleteUnassignedSets, anySet, false},
         {"all editors: selection", SelectAllEditors, selection, true},
         {"all editors: none", SelectAllEditors, nothing, false},
         {"scenegraph: a node", SelectInScenegraph, kind(nkObjectType::Node), true},
         {"scenegraph: a camera", SelectInScenegraph, kind(nkObjectType::Camera), true},
         {"scenegraph: a material", SelectInScenegraph, kind(nkObjectType::Material), false},
         {"materials: a material", SelectInMaterialEditor, kind(nkObjectType::Material), true},
         {"materials: a node", SelectInMaterialEditor, kind(nkObjectType::Node), true},
         {"materials: none", SelectInMaterialEditor, selection, false},
         {"cameras: a camera", SelectInCameraEditor, kind(nkObjectType::Camera), true},
         {"cameras: a light", SelectInCameraEditor, kind(nkObjectType::Light), true},
         {"cameras: a material", SelectInCameraEditor, kind(nkObjectType::Material), false},
         {"lights: a light", SelectInLightEditor, kind(nkObjectType::Light), true},
         {"lights: a node", SelectInLightEditor, kind(nkObjectType::Node), true},
         {"lights: a material", SelectInLightEditor, kind(nkObjectType::Material), false},
         {"sceneplates: a sceneplate", SelectInSceneplateEditor, kind(nkObjectType::Sceneplate), true},
         {"sceneplates: a node", SelectInSceneplateEditor, kind(nkObjectType::Node), true},
         {"sceneplates: a material", SelectInSceneplateEditor, kind(nkObjectType::Material), false},
         {"select all: sets", SelectAll, on(&Inputs::setsExist), true},
         {"select all: none", SelectAll, selection, false},
         {"deselect all: selection", DeselectAll, selection, true},
         {"deselect all: none", DeselectAll, nothing, false},
         {"invert: selection", InvertSelection, selection, true},
         {"invert: none", InvertSelection, nothing, false},
         {"assign last: lights", AssignToLastSelection, on(&Inputs::lightsInEditor), true},
         {"assign last: none", AssignToLastSelection, anySet, false},
         {"assign nodes", AssignToNodes, on(&Inputs::nodesInScenegraph), true},
         {"assign nodes: only cameras", AssignToNodes, on(&Inputs::camerasInEditor), false},
         {"assign materials", AssignToMaterials, on(&Inputs::materialsInEditor), true},
         {"assign materials: only nodes", AssignToMaterials, on(&Inputs::nodesInScenegraph), false},
         {"assign cameras", AssignToCameras, on(&Inputs::camerasInEditor), true},
         {"assign cameras: only lights", AssignToCameras, on(&Inputs::lightsInEditor), false},
         {"assign lights", AssignToLights, on(&Inputs::lightsInEditor), true},
         {"assign lights: only plates", AssignToLights, on(&Inputs::sceneplatesInEditor), false},
         {"assign sceneplates", AssignToSceneplates, on(&Inputs::sceneplatesInEditor), true},
         {"assign sceneplates: only materials", AssignToSceneplates, on(&Inputs::materialsInEditor), false},
         {"modify: at rest, unlocked", ModifyAsset, both(assetAtRest, unlockedSet), true},
         {"modify: at rest, locked", ModifyAsset, both(assetAtRest, lockedSet), false},
         {"modify: edited", ModifyAsset, both(editedAsset, unlockedSet), false},
         {"store: edited, unlocked", SaveInAssetManager, both(editedAsset, unlockedSet), true},
         {"store: edited, locked", SaveInAssetManager, both(editedAsset, lockedSet), false},
         {"store: at rest", SaveInAssetManager, both(assetAtRest, unlockedSet), false},
         {"find: an asset, locked", FindInAssetManager, both(assetAtRest, lockedSet), true},
         {"find: no asset", FindInAssetManager, unlockedSet, false},
         {"reload: unlocked", ReloadFromAssetManager, both(editedAsset, unlockedSet), true},
         {"reload: locked", ReloadFromAssetManager, both(assetAtRest, lockedSet), false},
         {"reload: no asset", ReloadFromAssetManager, unlockedSet, false},
         {"remove link: unlocked", RemoveAssetLink, both(assetAtRest, unlockedSet), true},
         {"remove link: locked", RemoveAssetLink, both(editedAsset, lockedSet), false},
         {"remove link: no asset", RemoveAssetLink, unlockedSet, false},
         {"focus mode", FocusMode, nothing, true},
         {"load", LoadMetadata, nothing, true}});
}

void TestRules::enables_menus_data()
{
    addRows("menu", {{"edit: list of sets", EditMenu, setsMode, true},
                     {"edit: selection", EditMenu, selection, true},
                     {"edit: neither", EditMenu, clipboard, false},
                     {"select objects: selection", SelectObjectsMenu, selection, true},
                     {"select objects: none", SelectObjectsMenu, setsMode, false},
                     {"asset: one", AssetMenu, assetAtRest, true},
                     {"asset: none", AssetMenu, unlockedSet, false},
                     {"assign: any set", AssignMenu, anySet, true},
                     {"assign: none", AssignMenu, object, false}});
}

NK_TEST_MAIN(TestRules)
#include "test_rules.moc"
