#include "nkQt4Ext/QNKListWidget.h"

#include <QKeyEvent>

namespace {

QList<QListWidgetItem *> itemsInOrder(const QListWidget *list)
{
    QList<QListWidgetItem *> items;
    items.reserve(list->count());
    for (int row = 0; row < list->count(); ++row)
        items.append(list->item(row));
    return items;
}

} // namespace

QNKListWidget::QNKListWidget(QWidget *parent) : QListWidget(parent)
{
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setUniformItemSizes(true);
    setAccessibleName(tr("List"));
}

QNKListWidget::~QNKListWidget() = default;

void QNKListWidget::moveCurrent(int offset)
{
    const int from = currentRow();
    if (from < 0)
        return;
    const int to = int(qBound(qint64(0), qint64(from) + offset, qint64(count()) - 1));
    if (to == from)
        return;
    // Qt counts the destination before the row is taken out.
    model()->moveRow(QModelIndex(), from, QModelIndex(), to > from ? to + 1 : to);
    scrollToItem(currentItem());
    Q_EMIT reordered();
}

void QNKListWidget::keyPressEvent(QKeyEvent *event)
{
    const bool moves = event->modifiers().testFlag(Qt::AltModifier)
                       && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down);
    if (!moves) {
        QListWidget::keyPressEvent(event);
        return;
    }
    moveCurrent(event->key() == Qt::Key_Up ? -1 : 1);
    event->accept();
}

void QNKListWidget::dropEvent(QDropEvent *event)
{
    const QList<QListWidgetItem *> before = itemsInOrder(this);
    QListWidget::dropEvent(event);
    if (itemsInOrder(this) != before)
        Q_EMIT reordered();
}
