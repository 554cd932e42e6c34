#pragma once

#include "ui_nkMetadataEditorGUI.h"

#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdObject.h>

#include <QList>
#include <QMainWindow>

#include <memory>
#include <vector>

class QAbstractItemDelegate;

class QNKToolBar;
class nkAdvancedSearch;
class nkMetadataActions;
class nkMetadataContextMenu;
class nkMetadataEditorUpdater;
class nkMetadataKeyValueHeader;
class nkMetadataKeyValueModel;
class nkMetadataKeyValueRootModelItem;
class nkMetadataKeyValueTreeView;
class nkMetadataSetItemFilter;
class nkMetadataTableFilterModel;
class nkMetadataTableFilters;
class nkMetadataTreeWidget;
class nkPropertyEditorWidget;

/// The editor window: two trees of metadata sets or scene objects beside the table of the entries of what is
/// selected there last, with a search above, a panel of the selected entries below the table, and the commands in
/// menus and in a bar. There is one, made when the plug-in starts and registered with the host's main window. It
/// follows the host's changes while it is shown, and catches up once when it is shown again.
class nkMetadataEditorModule : public QMainWindow, private Ui::nkMetadataEditorGUI
{
    Q_OBJECT
public:
    /// Builds the window, connects it to the host and registers it.
    /// @param objectName empty: the form's name
    nkMetadataEditorModule(QWidget *parent, const QString &objectName);
    ~nkMetadataEditorModule() override;

    /// The one window; null before construction and after destruction.
    static nkMetadataEditorModule *instance();

    /// The trees, upper first.
    QList<nkMetadataTreeWidget *> treeWidgets() const;
    nkMetadataEditorUpdater *updater() const { return m_updater; }

public Q_SLOTS:
    /// Shows the entries of these sets in the table.
    void onMetadataSelectionChanged(const QList<nkdMetadataSet> &sets);
    /// Opens the context menu of the trees at a global position; a torn-off copy is closed first.
    void onShowContextMenu(const QPoint &pos);
    /// Puts the selected entries into the host's entry clipboard.
    void copyEntries();
    /// Pastes the host's entry clipboard into what is selected in the trees.
    void pasteEntries();
    /// Removes the selected entries from their sets: one undo step.
    void deleteEntries();
    /// Shows a new entry's set in the table, if it is not shown yet, and opens the editor of the entry's key.
    void onEntryCreated(const nkdMetadataEntry &entry, const nkdMetadataSet &set);
    /// Asks for the refreshes that a change of one property of one object makes necessary.
    void onPropertyChanged(const nkdObject &object, const QString &property);
    /// Refreshes what the bits (nkMetadataUpdate::Bit) name, lowest bit first.
    void onUpdateScheduled(uint bits);
    /// Shows the selected entries in the property panel. @param force also where the panel is not visible
    void updatePropertyEditor(bool force);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void createUpdater();
    void createTrees();
    void connectTree(nkMetadataTreeWidget *tree, nkMetadataTreeWidget *other);
    void createAdvancedSearch();
    void createTable();
    void createPropertyPanel();
    void createQuickActionBar();
    void createTableModel();
    void createTableView();
    void createTableDelegates();
    void createTableFilters();
    void connectHost();
    void connectEditorSelections();
    void registerWithHost();

    void onTableSelectionChanged();
    void onSearchChanged(bool enabled, const QString &query);
    void onSearchFinished(bool ok, const QList<nkdMetadataSet> &sets);
    void onMetadataChanged(nkMetadataTypes::ChangeFlag flags);
    void reloadTable();
    QString tableHint() const;
    void reloadSelectionLists();
    void showLastSelection();
    void setFocusMode(bool on);

    nkMetadataActions *m_actions = nullptr;
    nkMetadataContextMenu *m_contextMenu = nullptr;
    QNKToolBar *m_quickActionBar = nullptr;
    QAction *m_createAction = nullptr;
    nkMetadataTreeWidget *m_upperTree = nullptr;
    nkMetadataTreeWidget *m_lowerTree = nullptr;
    nkAdvancedSearch *m_advancedSearch = nullptr;
    /// What the advanced search leaves of the upper tree.
    nkMetadataSetItemFilter *m_setItemFilter = nullptr;
    nkMetadataKeyValueTreeView *m_keyValueView = nullptr;
    nkMetadataKeyValueHeader *m_tableHeader = nullptr;
    nkMetadataTableFilters *m_tableFilters = nullptr;
    /// A view never owns its delegates.
    std::vector<std::unique_ptr<QAbstractItemDelegate>> m_delegates;
    /// Without parent; deleted by the destructor, before the views.
    nkMetadataTableFilterModel *m_tableFilterModel = nullptr;
    nkMetadataKeyValueModel *m_keyValueModel = nullptr;
    /// Owned by m_keyValueModel.
    nkMetadataKeyValueRootModelItem *m_rootItem = nullptr;
    /// Without parent; deleted by the destructor.
    nkMetadataEditorUpdater *m_updater = nullptr;
    /// Deleted by the destructor.
    nkPropertyEditorWidget *m_propertyEditor = nullptr;
};
