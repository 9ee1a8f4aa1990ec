#include "pictures/colours.h"

#include "pictures/random.h"

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

Palette basicPalette(Daytime daytime, double shift)
{
    switch (daytime) {
    case Daytime::Night:
        return {hsl(232 + shift, 0.60, 0.09), hsl(222 + shift, 0.48, 0.30), hsl(226 + shift, 0.36, 0.20),
                hsl(232 + shift, 0.42, 0.09), hsl(220 + shift, 0.50, 0.18), hsl(230 + shift, 0.30, 0.12),
                hsl(48, 0.75, 0.90),          hsl(42, 0.95, 0.66)};
    case Daytime::Sunset:
        return {hsl(262 + shift, 0.42, 0.36), hsl(26 + shift / 2, 0.92, 0.68),
                hsl(296 + shift, 0.24, 0.44), hsl(276 + shift, 0.32, 0.19),
                hsl(254 + shift, 0.26, 0.45), hsl(284 + shift, 0.24, 0.24),
                hsl(44, 1.00, 0.80),          hsl(350, 0.80, 0.60)};
    case Daytime::Dawn:
        return {hsl(206 + shift, 0.46, 0.66), hsl(16 + shift / 2, 0.72, 0.86),
                hsl(220 + shift, 0.26, 0.70), hsl(188 + shift, 0.26, 0.36),
                hsl(202 + shift, 0.36, 0.66), hsl(160 + shift, 0.24, 0.46),
                hsl(34, 0.95, 0.90),          hsl(338, 0.66, 0.68)};
    case Daytime::Day:
        break;
    }
    return {hsl(210 + shift / 2, 0.68, 0.56),
            hsl(198 + shift / 2, 0.62, 0.87),
            hsl(214 + shift, 0.30, 0.64),
            hsl(146 + shift, 0.36, 0.32),
            hsl(204 + shift, 0.54, 0.47),
            hsl(98 + shift, 0.40, 0.47),
            hsl(48, 1.00, 0.82),
            hsl(14 + shift, 0.82, 0.58)};
}

void tint(QColor &colour, double hue, double saturation, double amount)
{
    colour = mixed(colour, hsl(hue, saturation, lightnessOf(colour)), amount);
}

} // namespace

QColor mixed(const QColor &a, const QColor &b, double amount)
{
    const double t = std::clamp(amount, 0.0, 1.0);
    const auto mix = [t](double x, double y) { return std::clamp(x + (y - x) * t, 0.0, 1.0); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()),
                            mix(a.alphaF(), b.alphaF()));
}

QColor withAlpha(const QColor &colour, double alpha)
{
    QColor result = colour;
    result.setAlphaF(std::clamp(alpha, 0.0, 1.0));
    return result;
}

QColor hsl(double hue, double saturation, double lightness)
{
    double turn = std::fmod(hue, 360.0);
    turn = turn < 0 ? turn + 360.0 : turn;
    return QColor::fromHslF(turn / 360.0, std::clamp(saturation, 0.0, 1.0), std::clamp(lightness, 0.0, 1.0));
}

double lightnessOf(const QColor &colour)
{
    return colour.lightnessF();
}

Palette paletteFor(const Subject &subject)
{
    Random random(subject.seed ^ 0x5EEDU);
    Palette palette = basicPalette(subject.daytime, random.between(-20, 20));
    if (subject.motifs.testFlag(Motif::Autumn)) {
        tint(palette.near, 24, 0.70, 0.8);
        tint(palette.ground, 36, 0.65, 0.8);
    }
    if (subject.motifs.testFlag(Motif::Desert)) {
        tint(palette.near, 28, 0.55, 0.9);
        tint(palette.ground, 36, 0.62, 0.9);
        tint(palette.far, 22, 0.40, 0.7);
    }
    if (subject.motifs.testFlag(Motif::Snow)) {
        const double bright = subject.daytime == Daytime::Night ? 0.45 : 0.75;
        palette.ground = mixed(palette.ground, hsl(212, 0.30, 0.96), bright);
        palette.far = mixed(palette.far, hsl(212, 0.30, 0.94), bright * 0.6);
    }
    if (subject.motifs.testFlag(Motif::Rain)) {
        palette.skyTop = mixed(palette.skyTop, hsl(214, 0.14, 0.36), 0.6);
        palette.skyBottom = mixed(palette.skyBottom, hsl(210, 0.12, 0.62), 0.6);
    }
    return palette;
}

} // namespace tavro::assistantservice
