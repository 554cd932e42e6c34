#include "HsvColor.h"

void HsvColor::take(const QColor &color)
{
    value = color.valueF();
    if (color.value() == 0)
        return;
    saturation = color.hsvSaturationF();
    if (color.hsvHueF() >= 0.0)
        hue = color.hsvHueF();
}

QColor HsvColor::color() const
{
    // A hue of 1 is the hue of 0; QColor takes both.
    const QColor exact = QColor::fromHsvF(hue, saturation, value).toRgb();
    return QColor(exact.red(), exact.green(), exact.blue());
}
