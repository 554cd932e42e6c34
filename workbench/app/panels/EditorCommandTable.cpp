#include "EditorCommandTable.h"

#include <QCoreApplication>

namespace {

constexpr int inScenegraph = 1 << int(EditorModule::Scenegraph);
constexpr int inMaterials = 1 << int(EditorModule::Material);
constexpr int inLights = 1 << int(EditorModule::Light);
constexpr int inCameras = 1 << int(EditorModule::Camera);
constexpr int inSceneplates = 1 << int(EditorModule::Sceneplate);
constexpr int inTrees = inScenegraph | inMaterials;
constexpr int inAll = inTrees | inLights | inCameras | inSceneplates;

struct Entry
{
    int panels;
    EditorCommand command;
    const char *objectName;
    const char *text;
    const char *help;
    const char *icon;
    const char *iconCategory;
    int key;
    bool isInToolBar;
};

#define TEXT(text) QT_TRANSLATE_NOOP("EditorCommands", text)

constexpr bool onBar = true;
constexpr bool offBar = false;

using C = EditorCommand;

const QVector<Entry> &entries()
{
    static const QVector<Entry> table{
        {inMaterials, C::NewMaterial, "newMaterial", TEXT("New Ma&terial"),
         TEXT("Create a material behind the selected one, or in the selected group"), "NewMaterial",
         "General", 0, onBar},
        {inScenegraph, C::NewGroup, "newGroup", TEXT("New &Group"),
         TEXT("Create an empty group behind the selected object"), "NewGroup", "General", 0, onBar},
        {inMaterials, C::NewGroup, "newGroup", TEXT("New &Group"),
         TEXT("Create an empty group behind the selected material"), "NewMaterialGroup", "General", 0, onBar},
        {inCameras, C::NewCamera, "newCamera", TEXT("New &Camera"), TEXT("Create a camera"), "NewCamera",
         "General", 0, onBar},
        {inLights, C::NewLight, "newLight", TEXT("New &Light"), TEXT("Create a light"), "NewLight", "General",
         0, onBar},
        {inSceneplates, C::NewSceneplate, "newSceneplate", TEXT("New &Sceneplate..."),
         TEXT("Create a sceneplate from an image file"), "NewSceneplate", "General", 0, onBar},
        {inTrees, C::GroupSelected, "groupSelected", TEXT("Gr&oup Selected"),
         TEXT("Put what is selected into a new group"), "GroupSelected", "General", Qt::CTRL + Qt::Key_G,
         onBar},
        {inMaterials, C::Ungroup, "ungroup", TEXT("&Ungroup"),
         TEXT("Take the materials out of the selected groups and delete the groups"), "Ungroup", "General",
         Qt::CTRL + Qt::SHIFT + Qt::Key_G, offBar},
        {inTrees, C::MoveUp, "moveUp", TEXT("Move U&p"), TEXT("Move what is selected up by one place"),
         "MoveUp", "General", Qt::ALT + Qt::Key_Up, onBar},
        {inTrees, C::MoveDown, "moveDown", TEXT("Move Do&wn"),
         TEXT("Move what is selected down by one place"), "MoveDown", "General", Qt::ALT + Qt::Key_Down,
         onBar},
        {inTrees, C::MoveTo, "moveTo", TEXT("Mo&ve To..."),
         TEXT("Move what is selected below another object"), "", "", Qt::CTRL + Qt::SHIFT + Qt::Key_M,
         offBar},
        {inAll, C::Rename, "rename", TEXT("&Rename"), TEXT("Change the current name"), "RenameReference", "",
         0, offBar},
        {inSceneplates, C::ChooseImage, "chooseImage", TEXT("Choose &Image..."),
         TEXT("Show another image on the current sceneplate"), "", "", 0, offBar},
        {inSceneplates, C::InFront, "inFront", TEXT("In &Front of the Scene"),
         TEXT("Draw the selected sceneplates in front of the scene instead of behind it"), "", "", 0, offBar},
        {inAll, C::Lock, "lock", TEXT("Loc&ked"),
         TEXT("Keep what is selected from being renamed, moved and deleted"), "Lock", "", 0, offBar},
        {inAll, C::Delete, "delete", TEXT("&Delete"),
         TEXT("Delete what is selected, with everything below it"), "Delete", "", Qt::Key_Delete, onBar},
    };
    return table;
}

#undef TEXT

QString words(const char *text)
{
    return QCoreApplication::translate("EditorCommands", text);
}

} // namespace

QVector<EditorCommandRow> editorCommands(EditorModule module)
{
    QVector<EditorCommandRow> rows;
    for (const Entry &entry : entries()) {
        if ((entry.panels & (1 << int(module))) != 0) {
            rows.append({entry.command, QLatin1String(entry.objectName), words(entry.text), words(entry.help),
                         QLatin1String(entry.icon), QLatin1String(entry.iconCategory),
                         entry.key != 0 ? QKeySequence(entry.key) : QKeySequence(), entry.isInToolBar});
        }
    }
    return rows;
}
