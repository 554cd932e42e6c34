#include "RowsView.h"

#include <QPainter>

namespace {

constexpr int emptyTextMargin = 16;

} // namespace

RowsView::RowsView(QWidget *parent) : QTreeView(parent)
{
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

RowsView::~RowsView() = default;

void RowsView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void RowsView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (model() && model()->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        const QRect place = viewport()->rect().adjusted(emptyTextMargin, emptyTextMargin, -emptyTextMargin,
                                                        -emptyTextMargin);
        painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
    }
}
