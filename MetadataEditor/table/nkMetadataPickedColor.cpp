#include "table/nkMetadataPickedColor.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace {

struct Rgb
{
    float red;
    float green;
    float blue;
};

/// Hue in degrees 0..360, saturation and value 0..1.
struct Hsv
{
    float hue;
    float saturation;
    float value;
};

float hueOf(const Rgb &rgb, float largest, float range)
{
    float hue = 0.0f;
    if (largest == rgb.red) {
        hue = 60.0f * (rgb.green - rgb.blue) / range;
    } else if (largest == rgb.green) {
        hue = 120.0f + 60.0f * (rgb.blue - rgb.red) / range;
    } else {
        hue = 240.0f + 60.0f * (rgb.red - rgb.green) / range;
    }
    return hue < 0.0f ? hue + 360.0f : hue;
}

Hsv toHsv(const Rgb &rgb)
{
    const float largest = std::max({rgb.red, rgb.green, rgb.blue});
    const float range = largest - std::min({rgb.red, rgb.green, rgb.blue});
    if (range <= 0.0f) {
        return {0.0f, 0.0f, largest};
    }
    return {hueOf(rgb, largest, range), range / largest, largest};
}

Rgb toRgb(const Hsv &hsv)
{
    // Six sectors of 60 degrees; a hue of 360 or more belongs to the last.
    const int sector = std::min(int(hsv.hue / 60.0f), 5);
    const float within = hsv.hue / 60.0f - float(sector);
    const float low = hsv.value * (1.0f - hsv.saturation);
    const float falling = hsv.value * (1.0f - hsv.saturation * within);
    const float rising = hsv.value * (1.0f - hsv.saturation * (1.0f - within));
    switch (sector) {
    case 0:
        return {hsv.value, rising, low};
    case 1:
        return {falling, hsv.value, low};
    case 2:
        return {low, hsv.value, rising};
    case 3:
        return {low, falling, hsv.value};
    case 4:
        return {rising, low, hsv.value};
    default:
        return {hsv.value, low, falling};
    }
}

} // namespace

QNKColor nkMetadataPickedColor::fromColor(const QColor &color)
{
    const Rgb screen{float(color.red()) / 255.0f, float(color.green()) / 255.0f,
                     float(color.blue()) / 255.0f};
    const Rgb picked = toRgb(toHsv(screen));
    QNKColor result;
    result.setGammaRGB(picked.red, picked.green, picked.blue);
    return result;
}
