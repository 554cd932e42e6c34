#include "nkQt4Ext/QNKColor.h"

#include <cmath>

namespace {

/// IEC 61966-2-1, both directions.
float linearFromGamma(float gamma)
{
    return gamma <= 0.04045F ? gamma / 12.92F : std::pow((gamma + 0.055F) / 1.055F, 2.4F);
}

float gammaFromLinear(float linear)
{
    return linear <= 0.0031308F ? linear * 12.92F : 1.055F * std::pow(linear, 1.0F / 2.4F) - 0.055F;
}

/// Into 0..1; what is no number counts as 0.
float clamped(float component)
{
    return component > 0.0F ? std::fmin(component, 1.0F) : 0.0F;
}

int byteFromLinear(float linear)
{
    return int(std::lround(clamped(gammaFromLinear(linear)) * 255.0F));
}

} // namespace

void QNKColor::setGammaRGB(float red, float green, float blue)
{
    m_red = linearFromGamma(clamped(red));
    m_green = linearFromGamma(clamped(green));
    m_blue = linearFromGamma(clamped(blue));
}

QColor QNKColor::getGammaQColor() const
{
    return QColor(byteFromLinear(m_red), byteFromLinear(m_green), byteFromLinear(m_blue));
}
