#include "AssetView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int emptyTextMargin = 12;
/// How many rows are looked at for the width of a column.
constexpr int rowsForWidth = 50;

} // namespace

AssetView::AssetView(QAbstractItemModel *model, int stretched, QWidget *parent) : QTreeView(parent)
{
    setModel(model);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTextElideMode(Qt::ElideRight);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(rowsForWidth);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(stretched, QHeaderView::Stretch);
    header()->setSectionsMovable(false);
    connect(this, &QAbstractItemView::doubleClicked, this, &AssetView::placeRequested);
}

void AssetView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void AssetView::selectOnly(const QItemSelection &selection)
{
    if (selectionModel()->selection() != selection) {
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    const QModelIndex first = selection.indexes().value(0);
    if (first.isValid() && !selectionModel()->isSelected(currentIndex())) {
        selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        scrollTo(first);
    }
}

void AssetView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (model()->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        const QRect place = viewport()->rect().adjusted(emptyTextMargin, emptyTextMargin, -emptyTextMargin,
                                                        -emptyTextMargin);
        painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
    }
}

void AssetView::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->modifiers() == Qt::NoModifier && currentIndex().isValid()) {
        Q_EMIT placeRequested();
        return;
    }
    QTreeView::keyPressEvent(event);
}
