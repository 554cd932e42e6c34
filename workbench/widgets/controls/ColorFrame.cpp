#include "ColorFrame.h"

#include <QPainter>
#include <QWidget>

void ColorFrame::draw(QPainter *painter, const QWidget *widget)
{
    const QPalette &palette = widget->palette();
    const QRectF outer = QRectF(widget->rect());
    painter->save();
    painter->setBrush(Qt::NoBrush);
    if (widget->hasFocus()) {
        painter->setPen(QPen(palette.color(QPalette::Highlight), width));
        painter->drawRect(outer.adjusted(1.0, 1.0, -1.0, -1.0));
    } else {
        painter->setPen(QPen(palette.color(QPalette::Window).darker(140), 1.0));
        painter->drawRect(outer.adjusted(1.5, 1.5, -1.5, -1.5));
    }
    painter->restore();
}
