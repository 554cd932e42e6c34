#include "SceneObjectView.h"

#include "NoteDelegate.h"
#include "SceneObjectModel.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

namespace {

/// About what a person sees without scrolling.
constexpr int firstRows = 40;
/// Searches that find more are left folded: nobody reads through them.
constexpr int mostExpandedBySearch = 1000;
constexpr int emptyTextMargin = 16;
/// How long a drag rests on a folded row before it unfolds, in milliseconds.
constexpr int unfoldDelay = 700;

} // namespace

SceneObjectView::SceneObjectView(SceneObjectModel *model, QWidget *parent)
    : QNKTreeView(parent), m_model(model)
{
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    setRootIsDecorated(model->isTree());
    setItemsExpandable(model->isTree());
    setItemDelegate(new NoteDelegate(SceneObjectModel::NoteRole, this));
    setDragDropMode(model->isTree() ? InternalMove : DragOnly);
    setDropIndicatorShown(true);
    setAutoExpandDelay(unfoldDelay);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setModel(model);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &SceneObjectView::beforeReset);
    connect(model, &QAbstractItemModel::modelReset, this, &SceneObjectView::afterReset);
    connect(model, &SceneObjectModel::sceneReplaced, this, &SceneObjectView::expandFirstRows);
    connect(model, &SceneObjectModel::aboutToFollow, this, &SceneObjectView::takeAnchor);
    connect(model, &SceneObjectModel::followed, this, &SceneObjectView::afterFollowing);
    expandFirstRows();
}

SceneObjectView::~SceneObjectView() = default;

void SceneObjectView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    setAccessibleDescription(m_model->rowCount() == 0 ? text : QString());
    viewport()->update();
}

void SceneObjectView::setCurrentQuietly(const QModelIndex &index)
{
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    setAutoScroll(scrolls);
}

void SceneObjectView::beforeReset()
{
    m_current = m_model->idOf(currentIndex());
    if (m_model->isSearching()) {
        return; // what a search has unfolded is not what a person had open
    }
    m_expanded.clear();
    const QList<quint64> opened = m_model->openedObjects();
    for (const quint64 id : opened) {
        if (isExpanded(m_model->indexOf(id))) {
            m_expanded.append(id);
        }
    }
}

void SceneObjectView::afterReset()
{
    if (m_model->isSearching() && m_model->shownCount() <= mostExpandedBySearch) {
        expandAll();
    } else {
        for (const quint64 id : qAsConst(m_expanded)) {
            setExpanded(m_model->indexOf(id), true);
        }
    }
    setCurrentQuietly(m_model->indexOf(m_current));
}

/// Level by level, while everything fits.
void SceneObjectView::expandFirstRows()
{
    QModelIndexList level{QModelIndex()};
    int rows = m_model->rowCount();
    while (!level.isEmpty() && rows <= firstRows) {
        QModelIndexList next;
        for (const QModelIndex &parent : qAsConst(level)) {
            for (int row = 0; row < m_model->rowCount(parent); ++row) {
                const QModelIndex index = m_model->index(row, 0, parent);
                if (m_model->hasChildren(index) && rows + m_model->rowCount(index) <= firstRows) {
                    rows += m_model->rowCount(index);
                    expand(index);
                    next.append(index);
                }
            }
        }
        level = next;
    }
}

void SceneObjectView::takeAnchor()
{
    const QModelIndex first = isVisible() ? indexAt({0, 0}) : QModelIndex();
    m_anchor = m_model->idOf(first);
    m_anchorTop = visualRect(first).top();
}

void SceneObjectView::afterFollowing()
{
    // A row that was never looked below may have got its first child, or lost its last.
    scheduleDelayedItemsLayout();
    // Qt forgets that it is editing when any row goes, though the editor stays open.
    if (state() == NoState && indexWidget(currentIndex())) {
        setState(EditingState);
    }
    putAnchorBack();
}

void SceneObjectView::putAnchorBack()
{
    const QModelIndex anchor = m_anchor != 0 ? m_model->indexOf(m_anchor) : QModelIndex();
    if (anchor.isValid() && verticalScrollBar()->value() > 0) {
        executeDelayedItemsLayout();
        const QRect rect = visualRect(anchor);
        if (!rect.isEmpty()) {
            const int step = verticalScrollMode() == ScrollPerPixel ? 1 : rect.height();
            verticalScrollBar()->setValue(verticalScrollBar()->value() + (rect.top() - m_anchorTop) / step);
        }
    }
}

void SceneObjectView::paintEvent(QPaintEvent *event)
{
    QNKTreeView::paintEvent(event);
    if (m_model->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        const QRect place = viewport()->rect().adjusted(emptyTextMargin, emptyTextMargin, -emptyTextMargin,
                                                        -emptyTextMargin);
        painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
    }
}
