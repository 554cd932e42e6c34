#pragma once

#include <nkQt4Ext/QNKTreeView.h>

#include <QPersistentModelIndex>

class QAction;
class QMenu;
class QShortcut;

/// The key/value table: flat, a source of drags and no target, with an "Edit Entries" context menu and the
/// keys Copy, Paste and Delete. It carries out none of the three itself: it emits what was asked for.
///
/// The enable rules of the menu hold for the cell under the mouse when the menu is asked for, and for the
/// current cell whenever that, the selection or the metadata changes, so that a key never does what the menu
/// would refuse. While a cell editor is open the keys are the editor's.
class nkMetadataKeyValueTreeView : public QNKTreeView
{
    Q_OBJECT
public:
    explicit nkMetadataKeyValueTreeView(QWidget *parent = nullptr);
    ~nkMetadataKeyValueTreeView() override;

    void setModel(QAbstractItemModel *model) override;
    void setSelectionModel(QItemSelectionModel *selectionModel) override;
    /// Puts the "Create Entry" menu at the top of the context menu; null is ignored. Not owned. Called once.
    void setCreateEntryMenu(QMenu *menu);
    QMenu *contextMenu() const { return m_contextMenu; }
    using QNKTreeView::edit;

Q_SIGNALS:
    /// A cell editor has been closed.
    void editorClosed();
    void copyEntries();
    void pasteEntries();
    void deleteEntries();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;

protected Q_SLOTS:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void editorDestroyed(QObject *editor) override;

private:
    void createActions();
    QShortcut *createShortcut(const QKeySequence &key, QAction *action);
    void showContextMenu(const QPoint &pos);
    void evaluate(const QModelIndex &cell);
    void evaluateCurrent();
    void editTarget();
    void updateShortcuts();
    QModelIndex nextCell(const QModelIndex &from) const;
    QModelIndex previousCell(const QModelIndex &from) const;

    QMenu *m_contextMenu = nullptr;
    QAction *m_editAction = nullptr;
    QAction *m_pasteAction = nullptr;
    QAction *m_copyAction = nullptr;
    QAction *m_deleteAction = nullptr;
    QList<QShortcut *> m_shortcuts;
    /// The cell that the actions were last evaluated for.
    QPersistentModelIndex m_target;
    bool m_isMenuAskedByKeyboard = false;
};
