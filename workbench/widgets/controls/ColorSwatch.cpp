#include "ColorSwatch.h"

#include "ColorFrame.h"

#include <QPainter>

ColorSwatch::ColorSwatch(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setEnabled(false);
}

void ColorSwatch::setColor(const QColor &color)
{
    m_color = color;
    setEnabled(color.isValid());
    setToolTip(color.isValid() ? color.name() : QString());
    setAccessibleDescription(toolTip());
    update();
}

QSize ColorSwatch::sizeHint() const
{
    return QSize(24, 24);
}

void ColorSwatch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int inset = ColorFrame::width;
    if (m_color.isValid())
        painter.fillRect(rect().adjusted(inset, inset, -inset, -inset), m_color);
    ColorFrame::draw(&painter, this);
}
