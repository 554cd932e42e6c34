#pragma once

class QWidget;

/// The tree that has the keyboard focus, as far as commands depend on what it lists.
class nkMetadataFocusedTree
{
public:
    nkMetadataFocusedTree() = delete;

    /// Whether a tree inside the editor window has the focus and lists metadata sets. Focus that a pop-up
    /// or another window borrows counts as the tree's, as nkMetadataTreeView::focusChanged has it. False for
    /// null.
    static bool isSetsMode(const QWidget *editorWindow);
};
