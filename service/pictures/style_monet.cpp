#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

QColor broken(Canvas &canvas, const QColor &colour)
{
    const double hue = colour.hueF() * 360 + canvas.random.between(-26, 26);
    const double saturation = colour.hslSaturationF() * 0.8 + canvas.random.between(0.06, 0.24);
    return hsl(hue, saturation, colour.lightnessF() * 0.8 + 0.15 + canvas.random.between(-0.09, 0.10));
}

void paintDab(Canvas &canvas, const QPointF &at, double length, double angle, const QColor &colour)
{
    canvas.painter.save();
    canvas.painter.translate(at);
    canvas.painter.rotate(angle);
    canvas.painter.setBrush(withAlpha(colour, 0.82));
    canvas.painter.drawRoundedRect(QRectF(-length / 2, -length * 0.16, length, length * 0.32), length * 0.16,
                                   length * 0.16);
    canvas.painter.restore();
}

void paintDabs(Canvas &canvas, const QImage &sketch, int count, double longest)
{
    for (int i = 0; i < count && !canvas.cancelled; ++i) {
        const QPointF at(canvas.random.between(-10, canvas.scene.width + 10), canvas.random.between(-10, 1010));
        const bool flatly = at.y() > canvas.scene.horizon;
        const double angle = flatly ? canvas.random.between(-10, 10) : canvas.random.between(-50, 30);
        const double length = canvas.random.between(0.45, 1.0) * longest;
        paintDab(canvas, at, length, angle, broken(canvas, sampleAt(sketch, canvas, at)));
    }
}

// Lilies: what this painter would have put on any water.
void paintLilies(Canvas &canvas)
{
    for (int i = 0; i < 26; ++i) {
        const double y = canvas.random.between(canvas.scene.horizon + 150, 985);
        const double size = 18 + 40 * (y - canvas.scene.horizon) / 400;
        const QPointF at(canvas.random.between(0, canvas.scene.width), y);
        paintDab(canvas, at, size * 1.7, canvas.random.between(-6, 6),
                 hsl(canvas.random.between(96, 150), 0.35, canvas.random.between(0.38, 0.58)));
        paintDab(canvas, at + QPointF(6, 6), size * 1.2, canvas.random.between(-6, 6),
                 hsl(canvas.random.between(150, 190), 0.30, 0.40));
        if (canvas.random.chance(0.5)) {
            for (int petal = 0; petal < 5; ++petal) {
                paintDab(canvas, at + QPointF(canvas.random.between(-10, 10), -size * 0.2), size * 0.42,
                         canvas.random.between(-80, 80),
                         hsl(canvas.random.between(325, 360), 0.65, canvas.random.between(0.72, 0.94)));
            }
        }
    }
}

} // namespace

void paintMonet(Canvas &canvas)
{
    const QImage sketch = sketchOf(canvas, 400);
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.drawImage(canvas.area(), sketch);
    paintDabs(canvas, sketch, static_cast<int>(canvas.scene.width * 2.2), 56.0);
    paintDabs(canvas, sketch, static_cast<int>(canvas.scene.width * 4.0), 34.0);
    const Motifs motifs = canvas.scene.subject.motifs;
    if (motifs.testFlag(Motif::Sea) && !motifs.testFlag(Motif::Harbour)) {
        paintLilies(canvas);
    }
}

} // namespace tavro::assistantservice
