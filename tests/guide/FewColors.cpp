#include "FewColors.h"

#include <QHash>
#include <QMap>
#include <QVector>

#include <algorithm>
#include <cmath>

// The median cut: the box of colours that matters most is cut in two until there are enough boxes.

namespace {

constexpr int mostColors = 256;

struct Weighted
{
    QRgb color;
    qint64 pixels;
};
using Box = QVector<Weighted>;

int channel(QRgb color, int which)
{
    return int(color >> (8 * which)) & 0xff;
}

int extent(const Box &box, int which)
{
    const auto less = [which](const Weighted &one, const Weighted &other) {
        return channel(one.color, which) < channel(other.color, which);
    };
    const auto ends = std::minmax_element(box.cbegin(), box.cend(), less);
    return channel(ends.second->color, which) - channel(ends.first->color, which);
}

int widestChannel(const Box &box)
{
    const int blue = extent(box, 0);
    const int green = extent(box, 1);
    const int red = extent(box, 2);
    return green >= red && green >= blue ? 1 : red >= blue ? 2 : 0;
}

/// Wide boxes matter, for their colours change most; so do those with many pixels, but not in proportion.
double weight(const Box &box)
{
    qint64 pixels = 0;
    for (const Weighted &one : box) {
        pixels += one.pixels;
    }
    const double width = extent(box, widestChannel(box));
    return width * width * std::sqrt(double(pixels));
}

/// In the middle of what the box spans. @return the upper half
Box cut(Box *box)
{
    const int which = widestChannel(*box);
    std::sort(box->begin(), box->end(), [which](const Weighted &one, const Weighted &other) {
        const int left = channel(one.color, which);
        const int right = channel(other.color, which);
        return left != right ? left < right : one.color < other.color;
    });
    const int middle = (channel(box->constFirst().color, which) + channel(box->constLast().color, which)) / 2;
    const auto upper = std::find_if(box->begin(), box->end(), [which, middle](const Weighted &one) {
        return channel(one.color, which) > middle;
    });
    Box rest(box->end() - upper);
    std::copy(upper, box->end(), rest.begin());
    box->erase(upper, box->end());
    return rest;
}

QVector<Box> boxesOf(const Box &all)
{
    QVector<Box> boxes{all};
    QVector<double> weights{weight(all)};
    while (boxes.size() < mostColors) {
        const int widest = int(std::max_element(weights.cbegin(), weights.cend()) - weights.cbegin());
        if (weights.at(widest) <= 0) {
            break;
        }
        boxes.append(cut(&boxes[widest]));
        weights[widest] = weight(boxes.at(widest));
        weights.append(weight(boxes.constLast()));
    }
    return boxes;
}

QRgb mean(const Box &box)
{
    qint64 sums[3] = {0, 0, 0};
    qint64 pixels = 0;
    for (const Weighted &one : box) {
        pixels += one.pixels;
        for (int which = 0; which < 3; ++which) {
            sums[which] += channel(one.color, which) * one.pixels;
        }
    }
    const auto part = [&](int which) { return int((sums[which] + pixels / 2) / pixels); };
    return qRgb(part(2), part(1), part(0));
}

Box colorsOf(const QImage &picture)
{
    QMap<QRgb, qint64> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    Box all;
    for (auto one = counts.cbegin(); one != counts.cend(); ++one) {
        all.append({one.key(), one.value()});
    }
    return all;
}

} // namespace

QImage FewColors::of(const QImage &picture)
{
    const QVector<Box> boxes = boxesOf(colorsOf(picture));
    QVector<QRgb> palette;
    QHash<QRgb, uchar> places;
    for (const Box &box : boxes) {
        for (const Weighted &one : box) {
            places.insert(one.color, uchar(palette.size()));
        }
        palette.append(mean(box));
    }
    QImage indexed(picture.size(), QImage::Format_Indexed8);
    indexed.setColorTable(palette);
    for (int y = 0; y < picture.height(); ++y) {
        uchar *line = indexed.scanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            line[x] = places.value(picture.pixel(x, y));
        }
    }
    return indexed;
}
