#pragma once

class QPainter;
class QWidget;

/// The frame around the coloured areas of the colour dialog; it shows the keyboard focus as fields do.
namespace ColorFrame {

/// Of the frame, in device-independent pixels; the area lies inside.
constexpr int width = 2;

void draw(QPainter *painter, const QWidget *widget);

} // namespace ColorFrame
