#pragma once

#include <nkQt4Ext/QNKColor.h>

class QColor;

/// How a set's colour reaches the colour dialog.
namespace nkMetadataPickedColor {

/// The colour as gamma-space RGB, taken through hue, saturation and value in single precision, as the dialog
/// works with it. Alpha is dropped; an invalid colour is black.
QNKColor fromColor(const QColor &color);

} // namespace nkMetadataPickedColor
