#include "TitleButtonIcon.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

namespace {

// All lengths are shares of the icon's side.
constexpr qreal lineWidth = 0.12;
constexpr qreal crossMargin = 0.22;
constexpr qreal windowMargin = 0.2;
constexpr qreal windowOffset = 0.2;

QColor colourOf(QIcon::Mode mode)
{
    const bool isDisabled = mode == QIcon::Disabled;
    return QApplication::palette().color(isDisabled ? QPalette::Disabled : QPalette::Active,
                                         QPalette::WindowText);
}

void drawCross(QPainter *painter, const QRectF &square)
{
    const qreal margin = square.width() * crossMargin;
    const QRectF cross = square.adjusted(margin, margin, -margin, -margin);
    painter->drawLine(cross.topLeft(), cross.bottomRight());
    painter->drawLine(cross.bottomLeft(), cross.topRight());
}

/// A window before another.
void drawWindows(QPainter *painter, const QRectF &square)
{
    const qreal margin = square.width() * windowMargin;
    const qreal offset = square.width() * windowOffset;
    const QRectF both = square.adjusted(margin, margin, -margin, -margin);
    const QRectF front = both.adjusted(0, offset, -offset, 0);
    painter->drawRect(front);
    const QPointF behind[] = {{both.left() + offset, front.top()},
                              {both.left() + offset, both.top()},
                              both.topRight(),
                              {both.right(), both.bottom() - offset},
                              {front.right(), both.bottom() - offset}};
    painter->drawPolyline(behind, 5);
}

} // namespace

TitleButtonIcon::TitleButtonIcon(Sign sign) : m_sign(sign) {}

TitleButtonIcon::~TitleButtonIcon() = default;

void TitleButtonIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    Q_UNUSED(state)
    const qreal side = qMin(rect.width(), rect.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colourOf(mode), side * lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter->setBrush(Qt::NoBrush);
    if (m_sign == Close) {
        drawCross(painter, square);
    } else {
        drawWindows(painter, square);
    }
    painter->restore();
}

QPixmap TitleButtonIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return picture;
}

QIconEngine *TitleButtonIcon::clone() const
{
    return new TitleButtonIcon(*this);
}
