#include "playout/contrast.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace tavro::testsupport {

namespace {

double linear(double value)
{
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrastIn(const QImage &image)
{
    double lowest = 1.0;
    double highest = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double here = luminance(image.pixelColor(x, y));
            lowest = std::min(lowest, here);
            highest = std::max(highest, here);
        }
    }
    return (highest + 0.05) / (lowest + 0.05);
}

} // namespace tavro::testsupport
