#include "pictures/styles.h"

#include <QtMath>

#include <cmath>

namespace tavro::assistantservice {

namespace {

const QColor paper(253, 251, 245);

// The wash of the whole sheet does not reach its edge, and its own edge wavers.
QPainterPath sheet(Canvas &canvas, double inset)
{
    const QRectF area = canvas.area().adjusted(inset, inset, -inset, -inset);
    QPolygonF outline;
    const auto edge = [&](const QPointF &from, const QPointF &to) {
        for (int i = 0; i < 26; ++i) {
            const QPointF wobble(canvas.random.between(-11, 11), canvas.random.between(-11, 11));
            outline << from + (to - from) * (i / 26.0) + wobble;
        }
    };
    edge(area.topLeft(), area.topRight());
    edge(area.topRight(), area.bottomRight());
    edge(area.bottomRight(), area.bottomLeft());
    edge(area.bottomLeft(), area.topLeft());
    QPainterPath path;
    path.addPolygon(outline);
    path.closeSubpath();
    return path;
}

QColor pigment(const QColor &colour)
{
    return hsl(colour.hueF() * 360, std::min(0.9, colour.hslSaturationF() * 1.15 + 0.1),
               0.30 + 0.55 * colour.lightnessF());
}

// Several thin layers that do not quite cover each other, and a line where the colour gathers at the edge.
void paintLayers(Canvas &canvas, const QPainterPath &path, const QColor &colour, double strength)
{
    const double top = path.boundingRect().top();
    for (int layer = 0; layer < 4; ++layer) {
        const QPointF shift(canvas.random.between(-7, 7), canvas.random.between(-6, 6));
        const QColor wet = withAlpha(colour, strength);
        canvas.painter.fillPath(path.translated(shift),
                                vertical(top, top + canvas.random.between(240, 460), wet,
                                         withAlpha(mixed(colour, paper, 0.3), strength * 0.5)));
    }
    canvas.painter.strokePath(path, QPen(withAlpha(colour.darker(150), 0.26), 2.6));
}

// Where a drop fell into the wet colour.
void paintBlooms(Canvas &canvas, int count)
{
    for (int i = 0; i < count; ++i) {
        const QPointF centre(canvas.random.between(0, canvas.scene.width), canvas.random.between(0, 1000));
        const double radius = canvas.random.between(50, 190);
        QRadialGradient bloom(centre, radius);
        bloom.setColorAt(0.0, withAlpha(paper, 0.22));
        bloom.setColorAt(0.75, withAlpha(paper, 0.10));
        bloom.setColorAt(0.93, QColor(70, 80, 110, 9));
        bloom.setColorAt(1.0, withAlpha(paper, 0.0));
        canvas.painter.setBrush(bloom);
        canvas.painter.drawEllipse(centre, radius, radius * canvas.random.between(0.7, 1.0));
    }
}

void paintSplashes(Canvas &canvas)
{
    for (int i = 0; i < 46; ++i) {
        const QColor colour = canvas.random.chance(0.5) ? canvas.scene.palette.accent : canvas.scene.palette.near;
        canvas.painter.setBrush(withAlpha(pigment(colour), canvas.random.between(0.15, 0.4)));
        const double radius = std::pow(canvas.random.unit(), 3) * 11 + 1.5;
        canvas.painter.drawEllipse(
            QPointF(canvas.random.between(0, canvas.scene.width), canvas.random.between(0, 1000)), radius, radius);
    }
}

} // namespace

void paintWatercolor(Canvas &canvas)
{
    const Palette &palette = canvas.scene.palette;
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.fillRect(canvas.area(), paper);
    const QPainterPath wash = sheet(canvas, 34);
    canvas.painter.fillPath(wash,
                            vertical(0, canvas.scene.horizon + 60, withAlpha(pigment(palette.skyTop), 0.72),
                                     withAlpha(pigment(palette.skyBottom), 0.5)));
    canvas.painter.fillRect(canvas.area(),
                            glow(canvas.scene.light, 360, withAlpha(mixed(palette.light, paper, 0.3), 0.9)));
    paintBlooms(canvas, 9);
    canvas.painter.save();
    canvas.painter.setClipPath(wash);
    for (const Shape &shape : canvas.scene.shapes) {
        const bool bright = shape.role == Role::Light || shape.role == Role::Cloud || shape.role == Role::Star;
        if (bright) {
            canvas.painter.fillPath(shape.path,
                                    withAlpha(mixed(shape.colour, paper, 0.5), shape.role == Role::Cloud ? 0.5 : 0.9));
        } else {
            paintLayers(canvas, shape.path, pigment(shape.colour), 0.22 + 0.14 * shape.depth);
        }
    }
    canvas.painter.restore();
    paintBlooms(canvas, 6);
    paintSplashes(canvas);
}

} // namespace tavro::assistantservice
