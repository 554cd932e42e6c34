#include "TreeKeeper.h"

#include <nkQt4Ext/QNKItemModel.h>
#include <nkQt4Ext/QNKTreeView.h>

#include <QAbstractItemDelegate>
#include <QAbstractProxyModel>
#include <QEvent>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QSignalBlocker>

TreeKeeper::TreeKeeper(QNKTreeView *view) : QObject(view), m_view(view), m_viewport(view->viewport())
{
    view->viewport()->installEventFilter(this);
}

TreeKeeper::~TreeKeeper() = default;

void TreeKeeper::aboutToSetModel(QAbstractItemModel *model)
{
    disconnectAll();
    m_held.reset();
    m_expanded.clear();
    m_reloading = false;
    m_model = model;
    if (model)
        connectBefore();
}

void TreeKeeper::modelSet()
{
    if (!m_model)
        return;
    connectAfter();
    connectSource();
}

void TreeKeeper::connectBefore()
{
    using Model = QAbstractItemModel;
    const auto before = [this](bool removed) {
        return [this, removed](const QModelIndex &parent, int first, int last) {
            beforeRows(parent, first, last, removed);
        };
    };
    m_connections = {
        connect(m_model, &Model::rowsAboutToBeInserted, this, before(false)),
        connect(m_model, &Model::rowsAboutToBeRemoved, this, before(true)),
        connect(m_model, &Model::rowsAboutToBeMoved, this, before(false)),
        connect(m_model, &Model::layoutAboutToBeChanged, this, &TreeKeeper::beforeLayout),
        connect(m_model, &Model::modelAboutToBeReset, this, &TreeKeeper::beforeReset),
    };
}

void TreeKeeper::connectAfter()
{
    using Model = QAbstractItemModel;
    const auto laidOut = [this](const QList<QPersistentModelIndex> &, Model::LayoutChangeHint hint) {
        afterLayout(hint == Model::VerticalSortHint);
    };
    m_connections.append(connect(m_model, &Model::layoutChanged, this, laidOut));
    m_connections.append(connect(m_model, &Model::modelReset, this, &TreeKeeper::afterReset));
}

/// Finds the source model; again whenever a proxy gets another one.
void TreeKeeper::connectSource()
{
    for (const QMetaObject::Connection &connection : qAsConst(m_sourceConnections))
        disconnect(connection);
    m_sourceConnections.clear();
    m_place = RowPlace(m_model);
    for (const QAbstractProxyModel *proxy : m_place.proxies()) {
        m_sourceConnections.append(
            connect(proxy, &QAbstractProxyModel::sourceModelChanged, this, &TreeKeeper::connectSource));
        m_sourceConnections.append(
            connect(proxy, &QObject::destroyed, this, [this] { m_place = RowPlace(); }));
    }
    if (!m_place.isValid())
        return;
    m_sourceConnections.append(
        connect(m_place.source(), &QNKItemModel::aboutToReload, this, &TreeKeeper::beforeReload));
    m_sourceConnections.append(
        connect(m_place.source(), &QNKItemModel::reloaded, this, &TreeKeeper::afterReload));
}

void TreeKeeper::disconnectAll()
{
    for (const QMetaObject::Connection &connection : qAsConst(m_connections))
        disconnect(connection);
    for (const QMetaObject::Connection &connection : qAsConst(m_sourceConnections))
        disconnect(connection);
    m_connections.clear();
    m_sourceConnections.clear();
}

void TreeKeeper::beforeReload()
{
    m_reloading = true;
}

void TreeKeeper::afterReload()
{
    m_reloading = false;
    putBack(true);
}

/// Rows that come and go one by one take nothing else with them, but for the selection within a reload, which
/// has to be told at once.
void TreeKeeper::beforeRows(const QModelIndex &parent, int first, int last, bool removed)
{
    if (removed)
        closeEditorOf(parent, first, last);
    if (m_reloading)
        hold();
}

void TreeKeeper::beforeLayout()
{
    hold();
}

void TreeKeeper::afterLayout(bool sorted)
{
    if (!m_reloading)
        putBack(!sorted, true);
}

/// The view drops its editor now. The focus goes to the view first: not to whatever stands next in the window.
void TreeKeeper::beforeReset()
{
    const OpenEditor editor = OpenEditor::of(m_view);
    hold();
    if (!editor.isNull())
        leaveEditor(editor.widget, m_view->itemDelegate(editor.index));
}

/// Takes the focus out of an editor that is about to go, without its delegate committing it for that.
void TreeKeeper::leaveEditor(QWidget *editor, QAbstractItemDelegate *delegate)
{
    if (delegate)
        editor->removeEventFilter(delegate);
    const QWidget *const focus = editor->window()->focusWidget();
    if (!focus || (focus != editor && !editor->isAncestorOf(focus)))
        return;
    // A view that gains the focus looks for a current row: nothing a person has done.
    const QScopedValueRollback<bool> noGesture(m_puttingBack, true);
    m_view->setFocus(Qt::OtherFocusReason);
}

void TreeKeeper::afterReset()
{
    if (!m_reloading)
        putBack(true);
}

void TreeKeeper::hold()
{
    if (m_held || !m_place.isValid() || !m_view->selectionModel())
        return;
    const OpenEditor editor = OpenEditor::of(m_view);
    QItemSelectionModel *const selection = m_view->selectionModel();
    m_held.reset(new Held{TreeState(m_view, m_place, m_expanded),
                          editor,
                          m_place.slot(editor.index),
                          nullptr,
                          {},
                          false,
                          true,
                          false});
    if (!editor.isNull()) {
        m_held->delegate = m_view->itemDelegate(editor.index);
        m_held->editorState = EditorState(editor.widget);
        m_held->editorTouched = isTouched(editor);
    }
    m_held->wasSilent = selection->blockSignals(true);
    const QScopedValueRollback<bool> noGesture(m_puttingBack, true);
    selection->reset();
}

void TreeKeeper::selectionSetAnew()
{
    if (m_held)
        m_held->selectionKept = false;
}

void TreeKeeper::putBack(bool byRow, bool isSameRows)
{
    if (!m_held)
        return;
    const std::unique_ptr<Held> held = std::move(m_held);
    m_puttingBack = true;
    bool selectionChanged = false;
    bool currentChanged = false;
    {
        const QSignalBlocker silent(m_view); // nobody expands or collapses anything
        if (!m_expanded.isEmpty())
            TreeState::expand(m_view, m_place, isSameRows ? held->state.parents() : m_place.parents(),
                              m_expanded);
    }
    putSelectionBack(*held, selectionChanged, currentChanged);
    held->state.scroll(m_view, m_place, byRow);
    putEditorBack(*held);
    m_view->selectionModel()->blockSignals(held->wasSilent);
    m_view->viewport()->update();
    m_puttingBack = false;
    tell(*held, selectionChanged, currentChanged);
}

void TreeKeeper::putSelectionBack(Held &held, bool &selectionChanged, bool &currentChanged)
{
    QItemSelectionModel *const model = m_view->selectionModel();
    const QModelIndex current = held.state.current(m_place);
    selectionChanged = !held.selectionKept;
    currentChanged = held.state.hadCurrent() && !current.isValid();
    if (!held.selectionKept)
        return;
    bool isComplete = true;
    const QItemSelection selection = held.state.selection(m_place, isComplete);
    if (!selection.isEmpty())
        model->select(selection, QItemSelectionModel::ClearAndSelect);
    selectionChanged = !isComplete;
    if (current.isValid())
        model->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    else
        model->clearCurrentIndex();
}

/// A reset has closed the editor: it is opened again with what was typed. A new layout has kept it; where the
/// row is not shown any more, it goes without writing anything.
void TreeKeeper::putEditorBack(const Held &held)
{
    if (held.editorRow == RowPlace::None || (held.editor.widget && held.editor.isBeingCommitted()))
        return;
    const QModelIndex index = m_place.index(held.editorRow, held.editor.index.column());
    if (index.isValid()) {
        const QWidget *const editor = m_view->indexWidget(index);
        if (!editor || editor != held.editor.widget)
            reopenEditor(index, held);
        return;
    }
    if (held.editor.widget && held.editor.widget->isVisible()) {
        leaveEditor(held.editor.widget, held.delegate);
        held.editor.widget->hide(); // the view releases it with its next layout
    }
    if (m_view->state() == QAbstractItemView::EditingState)
        m_view->setState(QAbstractItemView::NoState);
}

void TreeKeeper::reopenEditor(const QModelIndex &index, const Held &held)
{
    if (!index.flags().testFlag(Qt::ItemIsEditable))
        return;
    if (!m_view->edit(index, QAbstractItemView::AllEditTriggers, nullptr))
        return;
    QWidget *const editor = m_view->indexWidget(index);
    if (!editor)
        return;
    if (held.editorTouched)
        held.editorState.applyTo(editor);
    else
        held.editorState.applyCursorTo(editor);
}

/// One signal for the selection and one for the current row, where they changed. Listeners may do anything.
void TreeKeeper::tell(const Held &held, bool selectionChanged, bool currentChanged)
{
    const QPointer<QItemSelectionModel> model(m_view->selectionModel());
    const QPointer<TreeKeeper> alive(this);
    if (selectionChanged)
        Q_EMIT model->selectionChanged(QItemSelection(), QItemSelection());
    if (!currentChanged || !alive || !model || m_held || model->currentIndex().isValid())
        return;
    const QModelIndex beside = held.state.besideCurrent(m_place);
    if (!beside.isValid()) {
        Q_EMIT model->currentChanged({}, {});
        return;
    }
    const bool scrolls = m_view->hasAutoScroll();
    m_view->setAutoScroll(false); // the current row went; the person did not
    m_puttingBack = true;
    model->setCurrentIndex(beside, QItemSelectionModel::NoUpdate);
    if (!alive)
        return;
    m_puttingBack = false;
    m_view->setAutoScroll(scrolls);
}

/// Closes the editor of a row that is about to go: the view would commit it when the current row moves on.
void TreeKeeper::closeEditorOf(const QModelIndex &parent, int first, int last)
{
    const OpenEditor editor = OpenEditor::of(m_view);
    QModelIndex row = editor.index;
    while (row.isValid() && row.parent() != parent)
        row = row.parent();
    if (row.isValid() && row.row() >= first && row.row() <= last)
        editor.cancel(m_view);
}

bool TreeKeeper::isTouched(const OpenEditor &editor) const
{
    return m_opened != editor.widget || !EditorState(editor.widget).hasContentsOf(m_openedState);
}

TreeKeeper::Typed TreeKeeper::typedIn(const QModelIndex &topLeft, const QModelIndex &bottomRight) const
{
    const OpenEditor editor = OpenEditor::of(m_view);
    const QModelIndex &index = editor.index;
    if (editor.isNull() || editor.isBeingCommitted() || index.parent() != topLeft.parent()
        || index.row() < topLeft.row() || index.row() > bottomRight.row() || index.column() < topLeft.column()
        || index.column() > bottomRight.column())
        return {};
    return {editor.widget, EditorState(editor.widget), isTouched(editor)};
}

void TreeKeeper::restoreTyped(const Typed &typed)
{
    if (!typed.editor)
        return;
    if (!typed.touched)
        m_openedState = EditorState(typed.editor); // it shows the new value, and still nothing was typed
    else if (!EditorState(typed.editor).hasContentsOf(typed.state))
        typed.state.applyTo(typed.editor);
}

/// Notes what an editor shows when it opens.
bool TreeKeeper::eventFilter(QObject *watched, QEvent *event)
{
    // Compared with what was noted: events still come while the view is being destroyed.
    if (watched == m_viewport) {
        if (event->type() == QEvent::ChildPolished)
            static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
    } else if (event->type() == QEvent::Show && watched != m_opened && watched->isWidgetType()) {
        m_opened = static_cast<QWidget *>(watched);
        m_openedState = EditorState(m_opened);
    }
    return QObject::eventFilter(watched, event);
}
