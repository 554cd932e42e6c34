#pragma once

#include <QWidget>

/// The strip of all hues, from red at the bottom through green and blue to red at the top. The arrow keys
/// move by a degree, Page Up and Page Down by ten; Home and End go to the ends.
class HueStrip : public QWidget
{
    Q_OBJECT
public:
    explicit HueStrip(QWidget *parent = nullptr);

    /// @param hue 0..1. Emits nothing.
    void setHue(double hue);
    double hue() const { return m_hue; }

    QSize sizeHint() const override;

Q_SIGNALS:
    /// A person chose another hue, 0..1.
    void moved(double hue);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF area() const;
    void moveTo(double hue);
    void moveToPoint(const QPointF &point);

    double m_hue = 0.0;
};
