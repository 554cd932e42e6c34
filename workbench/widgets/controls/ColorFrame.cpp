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
        // Between the ground and its text, so that the edge is seen in any palette.
        painter->setPen(QPen(palette.color(QPalette::Disabled, QPalette::WindowText), 1.0));
        painter->drawRect(outer.adjusted(1.5, 1.5, -1.5, -1.5));
    }
    painter->restore();
}
