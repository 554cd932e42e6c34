#include "HueStrip.h"

#include "ColorFrame.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr double degree = 1.0 / 360.0;
constexpr int sectors = 6;

} // namespace

HueStrip::HueStrip(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setAccessibleName(tr("Hue"));
    setToolTip(tr("Hue"));
}

void HueStrip::setHue(double hue)
{
    m_hue = hue;
    update();
}

QSize HueStrip::sizeHint() const
{
    return QSize(24, 120);
}

void HueStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient hues(area().bottomLeft(), area().topLeft());
    for (int sector = 0; sector <= sectors; ++sector) {
        const double position = double(sector) / sectors;
        hues.setColorAt(position, QColor::fromHsvF(position, 1.0, 1.0));
    }
    painter.fillRect(area(), hues);
    ColorFrame::draw(&painter, this);
    const double y = area().bottom() - m_hue * area().height();
    const QRectF mark(area().left() + 0.5, qBound(area().top() + 2.5, y, area().bottom() - 2.5) - 2.0,
                      area().width() - 1.0, 4.0);
    painter.setPen(QPen(Qt::black, 1.0));
    painter.setBrush(Qt::white);
    painter.drawRect(mark);
}

void HueStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        moveToPoint(event->localPos());
}

void HueStrip::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        moveToPoint(event->localPos());
}

void HueStrip::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return moveTo(m_hue + degree);
    case Qt::Key_Down:
    case Qt::Key_Left:
        return moveTo(m_hue - degree);
    case Qt::Key_PageUp:
        return moveTo(m_hue + 10 * degree);
    case Qt::Key_PageDown:
        return moveTo(m_hue - 10 * degree);
    case Qt::Key_Home:
        return moveTo(0.0);
    case Qt::Key_End:
        return moveTo(1.0);
    default:
        QWidget::keyPressEvent(event);
    }
}

QRectF HueStrip::area() const
{
    return QRectF(rect()).adjusted(ColorFrame::width, ColorFrame::width, -ColorFrame::width,
                                   -ColorFrame::width);
}

void HueStrip::moveTo(double hue)
{
    m_hue = qBound(0.0, hue, 1.0);
    update();
    Q_EMIT moved(m_hue);
}

void HueStrip::moveToPoint(const QPointF &point)
{
    moveTo((area().bottom() - point.y()) / area().height());
}
