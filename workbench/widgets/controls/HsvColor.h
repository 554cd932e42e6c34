#pragma once

#include <QColor>

/// A screen colour as hue, saturation and value, each 0..1. Unlike QColor it keeps the hue of a grey and the
/// saturation of black, so that moving one of the three never loses another.
struct HsvColor
{
    double hue = 0.0;
    double saturation = 0.0;
    double value = 0.0;

    /// Takes over a screen colour. What the colour does not say (the hue of a grey) stays as it was.
    void take(const QColor &color);
    /// The screen colour, rounded to 8 bits.
    QColor color() const;
};
