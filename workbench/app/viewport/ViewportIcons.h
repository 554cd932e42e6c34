#pragma once

#include <QIcon>

/// The icons of the viewport's tool bar, drawn in the colours of the palette, so that they are seen in every theme.
namespace ViewportIcons {

enum class Shape { Select, Orbit, Pan, Fit, All, Camera, Light };

QIcon icon(Shape shape);

} // namespace ViewportIcons
