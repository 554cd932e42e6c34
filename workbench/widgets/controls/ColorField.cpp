#include "ColorField.h"

#include "ColorFrame.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr double smallStep = 0.01;
constexpr double largeStep = 0.1;

} // namespace

ColorField::ColorField(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::CrossCursor);
    setAccessibleName(tr("Saturation and value"));
    setToolTip(tr("Saturation and value"));
}

void ColorField::setColor(const HsvColor &color)
{
    m_color = color;
    update();
}

QSize ColorField::sizeHint() const
{
    return QSize(220, 220);
}

QSize ColorField::minimumSizeHint() const
{
    return QSize(200, 200);
}

void ColorField::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient saturation(area().topLeft(), area().topRight());
    saturation.setColorAt(0.0, Qt::white);
    saturation.setColorAt(1.0, QColor::fromHsvF(m_color.hue, 1.0, 1.0));
    QLinearGradient value(area().topLeft(), area().bottomLeft());
    value.setColorAt(0.0, Qt::transparent);
    value.setColorAt(1.0, Qt::black);
    painter.fillRect(area(), saturation);
    painter.fillRect(area(), value);
    ColorFrame::draw(&painter, this);
    drawMark(&painter);
}

void ColorField::drawMark(QPainter *painter) const
{
    const QPointF centre(area().left() + m_color.saturation * area().width(),
                         area().bottom() - m_color.value * area().height());
    painter->setClipRect(area());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    // Two rings, so that the mark is seen on every colour.
    painter->setPen(QPen(Qt::black, 1.0));
    painter->drawEllipse(centre, 6.0, 6.0);
    painter->setPen(QPen(Qt::white, 1.5));
    painter->drawEllipse(centre, 4.8, 4.8);
}

void ColorField::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        moveToPoint(event->localPos());
}

void ColorField::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        moveToPoint(event->localPos());
}

void ColorField::keyPressEvent(QKeyEvent *event)
{
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? largeStep : smallStep;
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(m_color.saturation - step, m_color.value);
    case Qt::Key_Right:
        return moveTo(m_color.saturation + step, m_color.value);
    case Qt::Key_Up:
        return moveTo(m_color.saturation, m_color.value + step);
    case Qt::Key_Down:
        return moveTo(m_color.saturation, m_color.value - step);
    case Qt::Key_PageUp:
        return moveTo(m_color.saturation, m_color.value + largeStep);
    case Qt::Key_PageDown:
        return moveTo(m_color.saturation, m_color.value - largeStep);
    case Qt::Key_Home:
        return moveTo(0.0, m_color.value);
    case Qt::Key_End:
        return moveTo(1.0, m_color.value);
    default:
        QWidget::keyPressEvent(event);
    }
}

QRectF ColorField::area() const
{
    return QRectF(rect()).adjusted(ColorFrame::width, ColorFrame::width, -ColorFrame::width,
                                   -ColorFrame::width);
}

void ColorField::moveTo(double saturation, double value)
{
    m_color.saturation = qBound(0.0, saturation, 1.0);
    m_color.value = qBound(0.0, value, 1.0);
    update();
    Q_EMIT moved(m_color);
}

void ColorField::moveToPoint(const QPointF &point)
{
    moveTo((point.x() - area().left()) / area().width(), (area().bottom() - point.y()) / area().height());
}
