#pragma once

#include "HsvColor.h"

#include <QWidget>

/// The square of a hue: saturation grows to the right, value upwards. The arrow keys move the mark by a
/// hundredth, with Shift by a tenth; Page Up and Page Down move the value by a tenth, Home and End go to no
/// and to full saturation.
class ColorField : public QWidget
{
    Q_OBJECT
public:
    explicit ColorField(QWidget *parent = nullptr);

    /// Emits nothing.
    void setColor(const HsvColor &color);
    HsvColor color() const { return m_color; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// A person moved the mark.
    void moved(const HsvColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF area() const;
    void moveTo(double saturation, double value);
    void moveToPoint(const QPointF &point);
    void drawMark(QPainter *painter) const;

    HsvColor m_color;
};
