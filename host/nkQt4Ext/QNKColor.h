#pragma once

#include "nkQt4ExtExport.h"

#include <QColor>

/// A colour, kept as linear-light red, green and blue (0..1). Gamma space is the space of screen values, by
/// the sRGB transfer function (IEC 61966-2-1).
class NK_QT4EXT_EXPORT QNKColor
{
public:
    /// Black.
    QNKColor() = default;

    /// @param red, green, blue screen values 0..1; clamped
    void setGammaRGB(float red, float green, float blue);
    /// The screen values, rounded to 8 bits; opaque.
    QColor getGammaQColor() const;

    float linearRed() const { return m_red; }
    float linearGreen() const { return m_green; }
    float linearBlue() const { return m_blue; }

    bool operator==(const QNKColor &other) const
    {
        return m_red == other.m_red && m_green == other.m_green && m_blue == other.m_blue;
    }

private:
    float m_red = 0.0f;
    float m_green = 0.0f;
    float m_blue = 0.0f;
};
