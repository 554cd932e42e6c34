#pragma once

#include <QProxyStyle>

/// The style of the light and the dark theme: Fusion, with what Fusion leaves dark on dark mended. The signs of the
/// buttons in titles of docks are drawn in the colour of the text, at any scale; where windows are dark, boxes
/// to check have an outline that is seen, and tool buttons that are on show it by the colour of the highlight.
class ThemeStyle : public QProxyStyle
{
    Q_OBJECT
public:
    ThemeStyle();
    ~ThemeStyle() override;

    /// The objectName, by which the style in use is known.
    static QString name();

    QIcon standardIcon(StandardPixmap which, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
};
