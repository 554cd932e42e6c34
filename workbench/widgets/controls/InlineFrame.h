#pragma once

class QPainter;
class QStyleOptionToolButton;
class QWidget;

/// The look of buttons that continue a field: the field's outline goes on around them.
namespace InlineFrame {

/// Room for the arrow of a button with a menu, in device-independent pixels.
constexpr int menuArrowWidth = 12;

/// The height of a one-line field in the widget's style and font.
int fieldHeight(const QWidget *widget);

/// Draws the button: outline, ground by state, icon, text where there is room, menu arrow.
/// @param terminated the far edge is closed and rounded
/// @param leading no field stands before the button, so its near edge is closed too
void draw(QPainter *painter, const QStyleOptionToolButton &option, bool terminated, bool leading);

} // namespace InlineFrame
