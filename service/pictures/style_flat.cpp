#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

QColor poster(const QColor &colour)
{
    return hsl(colour.hueF() * 360, std::min(1.0, colour.hslSaturationF() * 1.25 + 0.08),
               colour.lightnessF() * 0.94 + 0.04);
}

void paintSkyBands(Canvas &canvas)
{
    const Palette &palette = canvas.scene.palette;
    constexpr int bands = 5;
    const double height = canvas.scene.horizon / bands;
    for (int i = 0; i < bands; ++i) {
        const QColor colour = poster(mixed(palette.skyTop, palette.skyBottom, i / (bands - 1.0)));
        canvas.painter.fillRect(QRectF(0, i * height, canvas.scene.width, Scene::height - i * height), colour);
    }
}

void paintLight(Canvas &canvas, const Shape &shape)
{
    const QPointF centre = canvas.scene.light;
    for (int ring = 3; ring >= 1; --ring) {
        const double radius = canvas.scene.lightRadius * (1 + 0.55 * ring);
        canvas.painter.setBrush(withAlpha(shape.colour, 0.16));
        canvas.painter.drawEllipse(centre, radius, radius);
    }
    canvas.painter.fillPath(shape.path, shape.colour);
}

void paintWaves(Canvas &canvas)
{
    const QColor colour = withAlpha(mixed(canvas.scene.palette.water, Qt::white, 0.6), 0.8);
    canvas.painter.setPen(QPen(colour, 5, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 26; ++i) {
        const QPointF at(canvas.random.between(0, canvas.scene.width),
                         canvas.scene.horizon + 24 + 15 * i * canvas.random.between(0.6, 1.0));
        canvas.painter.drawLine(at, at + QPointF(canvas.random.between(30, 100), 0));
    }
    canvas.painter.setPen(Qt::NoPen);
}

} // namespace

void paintFlat(Canvas &canvas)
{
    canvas.painter.setPen(Qt::NoPen);
    paintSkyBands(canvas);
    for (const Shape &shape : canvas.scene.shapes) {
        if (shape.role == Role::Light) {
            paintLight(canvas, shape);
            continue;
        }
        canvas.painter.fillPath(shape.path, shape.role == Role::Cloud ? shape.colour : poster(shape.colour));
        if (shape.role == Role::Water) {
            paintWaves(canvas);
        }
    }
}

// The neutral picture: plain shapes in quiet colours.
void paintPlain(Canvas &canvas)
{
    const Palette &palette = canvas.scene.palette;
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.fillRect(canvas.area(), vertical(0, canvas.scene.horizon, palette.skyTop, palette.skyBottom));
    for (const Shape &shape : canvas.scene.shapes) {
        canvas.painter.fillPath(
            shape.path, mixed(shape.colour, hsl(shape.colour.hueF() * 360, 0.12, shape.colour.lightnessF()), 0.35));
    }
}

} // namespace tavro::assistantservice
