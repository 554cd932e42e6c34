#include "PlaceholderIcon.h"

#include <QPainter>

namespace kernel {

QIcon PlaceholderIcon::icon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64}) {
        icon.addPixmap(pixmap(QSize(side, side)));
    }
    return icon;
}

QPixmap PlaceholderIcon::pixmap(const QSize &size)
{
    QPixmap canvas(size);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setPen(QPen(QColor(0xd2, 0x50, 0x4b), qMax(1.0, size.height() / 14.0)));
    const qreal margin = size.height() / 8.0;
    const QRectF frame = QRectF(QPointF(), size).adjusted(margin, margin, -margin, -margin);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRect(frame);
    painter.drawLine(frame.topLeft(), frame.bottomRight());
    painter.drawLine(frame.bottomLeft(), frame.topRight());
    return canvas;
}

} // namespace kernel
