#pragma once

#include <QAbstractButton>

/// A patch of a colour that can be pressed; empty where it has none.
class ColorSwatch : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget *parent = nullptr);

    QColor color() const { return m_color; }
    /// @param color invalid: none, and the swatch is disabled
    void setColor(const QColor &color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};
