#include "table/nkMetadataKeyValueTreeView.h"

#include "table/nkMetadataCellDelegate.h"
#include "table/nkMetadataRowHandles.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkQt4Ext/nkIconCache.h>
#include <nkQt4Ext/nkShortcut.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QPainter>
#include <QShortcut>

using namespace nkMetadataKeyValue;

namespace {

const QColor separatorColor(50, 50, 50);

} // namespace

nkMetadataKeyValueTreeView::nkMetadataKeyValueTreeView(QWidget *parent) : QNKTreeView(parent)
{
    setRootIsDecorated(false);
    setAlternatingRowColors(false);
    // The icon column's cursor follows the mouse without a pressed button.
    setAttribute(Qt::WA_MouseTracking);
    setDragDropMode(QAbstractItemView::DragOnly);
    setAcceptDrops(false);
    setDragPixmap(nkIconCache::Metadata::getMetadataSetIconPixmap());
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked);
    setTabKeyNavigation(true);
    setItemDelegate(new nkMetadataCellDelegate(this));
    setContextMenuPolicy(Qt::CustomContextMenu);
    createActions();
    connect(this, &QWidget::customContextMenuRequested, this, &nkMetadataKeyValueTreeView::showContextMenu);
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this,
            &nkMetadataKeyValueTreeView::evaluateCurrent);
}

nkMetadataKeyValueTreeView::~nkMetadataKeyValueTreeView() = default;

void nkMetadataKeyValueTreeView::createActions()
{
    m_contextMenu = new QMenu(tr("Edit Entries"), this);
    m_contextMenu->setTearOffEnabled(true);
    const auto withKey = [](const QString &text, const QKeySequence &key) {
        return text + QLatin1Char('\t') + nkShortcut::convertKey(key);
    };
    const QKeySequence copyKey(Qt::CTRL | Qt::Key_C);
    const QKeySequence pasteKey(Qt::CTRL | Qt::Key_V);
    const QKeySequence deleteKey(Qt::Key_Delete);
    m_editAction = m_contextMenu->addAction(tr("Edit"), this, &nkMetadataKeyValueTreeView::editTarget);
    m_copyAction = m_contextMenu->addAction(withKey(tr("Copy"), copyKey), this,
                                            &nkMetadataKeyValueTreeView::copyEntries);
    m_pasteAction = m_contextMenu->addAction(withKey(tr("Paste"), pasteKey), this,
                                             &nkMetadataKeyValueTreeView::pasteEntries);
    m_deleteAction = m_contextMenu->addAction(withKey(tr("Delete"), deleteKey), this,
                                              &nkMetadataKeyValueTreeView::deleteEntries);
    m_shortcuts = {createShortcut(copyKey, m_copyAction), createShortcut(pasteKey, m_pasteAction),
                   createShortcut(deleteKey, m_deleteAction)};
    evaluateCurrent();
}

QShortcut *nkMetadataKeyValueTreeView::createShortcut(const QKeySequence &key, QAction *action)
{
    auto *shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, action, [this, action] {
        // Clipboard and locks change without telling the table.
        evaluateCurrent();
        // Qt triggers disabled actions too.
        if (action->isEnabled()) {
            action->trigger();
        }
    });
    return shortcut;
}

void nkMetadataKeyValueTreeView::setCreateEntryMenu(QMenu *menu)
{
    if (menu) {
        m_contextMenu->insertMenu(m_editAction, menu);
    }
}

void nkMetadataKeyValueTreeView::setModel(QAbstractItemModel *model)
{
    QNKTreeView::setModel(model);
    evaluateCurrent();
}

void nkMetadataKeyValueTreeView::setSelectionModel(QItemSelectionModel *selectionModel)
{
    QNKTreeView::setSelectionModel(selectionModel);
    if (selectionModel) {
        connect(selectionModel, &QItemSelectionModel::currentChanged, this,
                &nkMetadataKeyValueTreeView::evaluateCurrent);
        connect(selectionModel, &QItemSelectionModel::selectionChanged, this,
                &nkMetadataKeyValueTreeView::evaluateCurrent);
    }
}

bool nkMetadataKeyValueTreeView::event(QEvent *event)
{
    const bool isByKeyboard = event->type() == QEvent::ContextMenu
                              && static_cast<QContextMenuEvent *>(event)->reason()
                                     == QContextMenuEvent::Keyboard;
    m_isMenuAskedByKeyboard = isByKeyboard && currentIndex().isValid();
    return QNKTreeView::event(event);
}

void nkMetadataKeyValueTreeView::showContextMenu(const QPoint &pos)
{
    QPoint place = pos;
    if (m_isMenuAskedByKeyboard) {
        scrollTo(currentIndex());
        place = visualRect(currentIndex()).center();
        evaluate(currentIndex());
    } else {
        evaluate(indexAt(pos));
    }
    m_contextMenu->popup(viewport()->mapToGlobal(place));
}

void nkMetadataKeyValueTreeView::evaluate(const QModelIndex &cell)
{
    m_target = cell;
    const bool isLocked = nkMetadataRowHandles::set(cell).isLocked();
    m_editAction->setEnabled(cell.isValid() && cell.column() > IconColumn && !isLocked);
    m_copyAction->setEnabled(cell.isValid());
    m_pasteAction->setEnabled(!nkMetadataService::the().hasNoCopiedEntries() && !isLocked);
    m_deleteAction->setEnabled(cell.isValid() && !isLocked);
}

void nkMetadataKeyValueTreeView::evaluateCurrent()
{
    // While the menu is open it speaks of the cell it was asked for.
    evaluate(m_contextMenu->isVisible() ? QModelIndex(m_target) : currentIndex());
}

void nkMetadataKeyValueTreeView::editTarget()
{
    const QModelIndex cell = m_target;
    if (cell.flags() & Qt::ItemIsEditable) {
        setCurrentIndex(cell);
        QNKTreeView::edit(cell);
    }
}

bool nkMetadataKeyValueTreeView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool isHandled = QNKTreeView::edit(index, trigger, event);
    updateShortcuts();
    return isHandled;
}

void nkMetadataKeyValueTreeView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QNKTreeView::closeEditor(editor, hint);
    updateShortcuts();
    // A combo box gives its focus up to be closed; the keyboard stays in the table.
    if (!window()->focusWidget()) {
        setFocus();
    }
    Q_EMIT editorClosed();
}

void nkMetadataKeyValueTreeView::editorDestroyed(QObject *editor)
{
    QNKTreeView::editorDestroyed(editor);
    updateShortcuts();
}

void nkMetadataKeyValueTreeView::updateShortcuts()
{
    for (QShortcut *shortcut : qAsConst(m_shortcuts)) {
        shortcut->setEnabled(state() != EditingState);
    }
}

QModelIndex nkMetadataKeyValueTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex current = currentIndex();
    if (current.isValid() && action == MoveNext) {
        return nextCell(current);
    }
    if (current.isValid() && action == MovePrevious) {
        return previousCell(current);
    }
    return QNKTreeView::moveCursor(action, modifiers);
}

QModelIndex nkMetadataKeyValueTreeView::nextCell(const QModelIndex &from) const
{
    if (from.column() + 1 < model()->columnCount()) {
        return model()->index(from.row(), from.column() + 1);
    }
    const bool isLastRow = from.row() + 1 >= model()->rowCount();
    return model()->index(isLastRow ? 0 : from.row() + 1, 0);
}

QModelIndex nkMetadataKeyValueTreeView::previousCell(const QModelIndex &from) const
{
    if (from.column() > 0) {
        return model()->index(from.row(), from.column() - 1);
    }
    const int row = from.row() > 0 ? from.row() - 1 : model()->rowCount() - 1;
    return model()->index(row, model()->columnCount() - 1);
}

void nkMetadataKeyValueTreeView::paintEvent(QPaintEvent *event)
{
    QNKTreeView::paintEvent(event);
    QPainter painter(viewport());
    for (int i = 0; i < header()->count(); ++i) {
        const int x = header()->sectionViewportPosition(i) - header()->x();
        painter.fillRect(x, 0, 1, viewport()->height(), separatorColor);
    }
}
