#pragma once

#include "pictures/subject.h"

#include <QColor>

namespace tavro::assistantservice {

/// The colours of a scene, before a style changes them.
struct Palette {
    QColor skyTop;
    QColor skyBottom;
    QColor far;
    QColor near;
    QColor water;
    QColor ground;
    QColor light;
    QColor accent;
};

Palette paletteFor(const Subject &subject);

/// From `a` (0.0) to `b` (1.0).
QColor mixed(const QColor &a, const QColor &b, double amount);
QColor withAlpha(const QColor &colour, double alpha);
/// Hue in degrees, the others from 0 to 1 and cut to that.
QColor hsl(double hue, double saturation, double lightness);
double lightnessOf(const QColor &colour);

} // namespace tavro::assistantservice
