#include "DifferingMark.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

constexpr int side = 16; // device-independent pixels

} // namespace

DifferingMark::DifferingMark(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("DifferingMark"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QCoreApplication::translate("Metadata", "The values differ"));
    setToolTip(accessibleName());
}

DifferingMark::~DifferingMark() = default;

QSize DifferingMark::sizeHint() const
{
    return {side, side};
}

void DifferingMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().highlight());
    painter.drawRoundedRect(QRectF(0.5, 0.5, side - 1, side - 1), 3, 3);
    painter.setPen(QPen(palette().highlightedText(), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(4.5, 6.25), QPointF(11.5, 6.25));
    painter.drawLine(QPointF(4.5, 9.75), QPointF(11.5, 9.75));
    painter.drawLine(QPointF(6.0, 12.5), QPointF(10.0, 3.5));
}
