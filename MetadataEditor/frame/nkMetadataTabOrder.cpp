#include "frame/nkMetadataTabOrder.h"

#include <QLayout>
#include <QWidget>

namespace {

/// The widgets that Tab stops at, in the order of the layouts. What has no layout is one stop at most.
QList<QWidget *> tabStops(QWidget *widget)
{
    QList<QWidget *> stops;
    if (widget->focusPolicy() & Qt::TabFocus) {
        stops.append(widget);
    }
    const QLayout *layout = widget->layout();
    for (int i = 0; layout && i < layout->count(); ++i) {
        if (QWidget *inner = layout->itemAt(i)->widget()) {
            stops.append(tabStops(inner));
        }
    }
    return stops;
}

} // namespace

void nkMetadataTabOrder::follow(const QList<QWidget *> &widgets)
{
    QWidget *last = nullptr;
    for (QWidget *widget : widgets) {
        const QList<QWidget *> stops = tabStops(widget);
        for (QWidget *stop : stops) {
            if (last) {
                QWidget::setTabOrder(last, stop);
            }
            last = stop;
        }
    }
}
