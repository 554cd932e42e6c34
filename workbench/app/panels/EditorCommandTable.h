#pragma once

#include "EditorModule.h"

#include <QKeySequence>
#include <QString>
#include <QVector>

/// What the panels of the editors offer to do.
enum class EditorCommand {
    NewGroup,
    NewMaterial,
    NewCamera,
    NewLight,
    NewSceneplate,
    GroupSelected,
    Ungroup,
    MoveUp,
    MoveDown,
    MoveTo,
    Rename,
    ChooseImage,
    InFront,
    Lock,
    Delete
};

/// One command of one panel: how it is called, drawn and reached.
struct EditorCommandRow
{
    EditorCommand command;
    /// Of the action; never translated.
    QString objectName;
    /// For menus, with a mnemonic, translated.
    QString text;
    /// What it does, in a sentence without its key, translated.
    QString help;
    QString icon;
    QString iconCategory;
    QKeySequence key;
    bool isInToolBar;
};

/// The commands of a panel in the order of its menu and its tool bar.
QVector<EditorCommandRow> editorCommands(EditorModule module);
