#pragma once

#include "actions/nkMetadataActionId.h"

#include <QKeySequence>

#include <vector>

/// What the catalogue is built from: one row a command, one row a sub-menu. Texts are in English, to be
/// translated in the context "nkMetadataActions".
namespace nkMetadataAction {

/// Where the icon of a command comes from.
enum class IconSource {
    None,
    Named,       ///< nkIconManager::getIcon of a name and a category
    Path,        ///< nkIconManager::get of a resource path
    Tag,         ///< the icon of tags
    GraphFocused ///< the icon of the focus mode
};

struct Icon
{
    IconSource source = IconSource::None;
    const char *name = "";     ///< or the path
    const char *category = ""; ///< empty: the default icon set
};

struct Shortcut
{
    int keys = 0; ///< modifiers and key; 0: see standard
    QKeySequence::StandardKey standard = QKeySequence::UnknownKey;

    /// Empty for no shortcut.
    QKeySequence sequence() const;
};

struct Row
{
    Id id = Count;
    const char *text = "";
    const char *toolTip = nullptr; ///< null: none is set
    Icon icon;
    Shortcut shortcut;
};

struct MenuRow
{
    Menu menu = MenuCount;
    const char *title = "";
    std::vector<Id> actions; ///< from top to bottom
};

/// One row for every command, in the order of Id; the separator has none.
const std::vector<Row> &rows();
/// One row for every sub-menu, in the order of Menu.
const std::vector<MenuRow> &menuRows();

} // namespace nkMetadataAction
