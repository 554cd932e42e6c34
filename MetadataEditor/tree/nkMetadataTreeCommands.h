#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QObject>

class nkMetadataTreeModel;
class nkMetadataTreeView;
class nkMetadataTreeWidget;

/// Carries out in one tree what the commands of the catalogue ask of every tree. Rename, the selection
/// commands and the naming of a new set are for the tree with the keyboard focus alone (focus that a menu or
/// another window borrows counts as the tree's). The removals are not: each tree does them on its own
/// selection.
class nkMetadataTreeCommands : public QObject
{
    Q_OBJECT
public:
    /// Connects itself to the handler of the catalogue, and puts the shortcuts of the catalogue's actions on
    /// the view; without a catalogue it does nothing.
    /// @param tree becomes the parent
    /// @param model the model below the proxy of the tree's view
    nkMetadataTreeCommands(nkMetadataTreeWidget *tree, nkMetadataTreeModel *model);
    ~nkMetadataTreeCommands() override;

private:
    void connectHandler();
    void addActions();
    bool hasFocus() const;
    /// The index of a row in the view's model; invalid where the row is not there or filtered out.
    QModelIndex viewIndexOf(const QString &rowId) const;

    void onSetCreated(const nkdMetadataSet &set, const nkdSceneObject &object);
    void onEntryCreated();
    void rename();
    void selectAll();
    void deselectAll();
    void invertSelection();
    void removeSelectedAssignments();
    void removeAllAssignments();

    nkMetadataTreeWidget *const m_tree;
    nkMetadataTreeModel *const m_model;
    nkMetadataTreeView *const m_view;
};
