#include "pictures/styles.h"

#include <QtMath>

#include <cmath>

namespace tavro::assistantservice {

namespace {

const QColor paper(240, 230, 208);

struct Inks {
    QColor dark;
    QColor middle;
};

Inks inksFor(const Scene &scene)
{
    const double hue = scene.palette.accent.hueF() * 360;
    return {hsl(218, 0.42, 0.13), hsl(hue, 0.58, 0.47)};
}

// Rows of carved grooves, as a repeating gradient with hard steps: drawn one by one under a clip they would take most
// of the time of a large picture.
void carve(Canvas &canvas, const QPainterPath &shape, double spacing, double groove, double slope, const QColor &colour)
{
    constexpr int rows = 6;
    const QPointF across = QPointF(-slope, 1) / std::hypot(slope, 1.0) * spacing * rows;
    QLinearGradient grooves(QPointF(0, 0), across);
    grooves.setSpread(QGradient::RepeatSpread);
    for (int i = 0; i < rows; ++i) {
        const double middle = (i + 0.5 + canvas.random.between(-0.15, 0.15)) / rows;
        const double half = groove / spacing / rows / 2 * canvas.random.between(0.55, 1.25);
        const double soft = 0.08 / rows;
        grooves.setColorAt(middle - half - soft, withAlpha(colour, 0));
        grooves.setColorAt(middle - half, colour);
        grooves.setColorAt(middle + half, colour);
        grooves.setColorAt(middle + half + soft, withAlpha(colour, 0));
    }
    canvas.painter.fillPath(shape, grooves);
}

void paintSky(Canvas &canvas, const Inks &inks)
{
    const bool night = canvas.scene.subject.daytime == Daytime::Night;
    canvas.painter.fillRect(canvas.area(), night ? inks.dark : mixed(inks.middle, paper, 0.35));
    double y = 4;
    for (int i = 0; y < canvas.scene.horizon + 30; ++i) {
        const double groove = 1.5 + 9.0 * y / canvas.scene.horizon;
        canvas.painter.setPen(
            QPen(night ? mixed(inks.middle, inks.dark, 0.35) : paper, groove, Qt::SolidLine, Qt::RoundCap));
        canvas.painter.drawLine(QPointF(0, y), QPointF(canvas.scene.width, y + canvas.random.between(-5, 5)));
        y += 14;
    }
    canvas.painter.setPen(Qt::NoPen);
}

void paintRays(Canvas &canvas, const Inks &inks)
{
    const QPointF centre = canvas.scene.light;
    const double radius = canvas.scene.lightRadius * 1.15;
    canvas.painter.setPen(QPen(paper, 7, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 28; ++i) {
        const double angle = i * 2 * M_PI / 28;
        const QPointF direction(std::cos(angle), std::sin(angle));
        canvas.painter.drawLine(centre + direction * (radius + 16), centre + direction * (radius + (i % 2 ? 58 : 96)));
    }
    canvas.painter.setPen(QPen(inks.dark, 7));
    canvas.painter.setBrush(paper);
    canvas.painter.drawEllipse(centre, radius, radius);
    canvas.painter.setPen(Qt::NoPen);
}

void paintShape(Canvas &canvas, const Shape &shape, const Inks &inks)
{
    switch (shape.role) {
    case Role::Light:
        paintRays(canvas, inks);
        break;
    case Role::Far:
    case Role::City: {
        canvas.painter.fillPath(shape.path, mixed(inks.dark, inks.middle, 0.75 - shape.depth));
        carve(canvas, shape.path, 12 + 10 * shape.depth, 3.4, shape.depth > 0.3 ? 0.35 : -0.28, paper);
        canvas.painter.strokePath(shape.path, QPen(inks.dark, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        break;
    }
    case Role::Water:
        canvas.painter.fillPath(shape.path, inks.dark);
        carve(canvas, shape.path, 15, 5.5, 0.0, mixed(inks.middle, paper, 0.5));
        break;
    case Role::Ground:
        canvas.painter.fillPath(shape.path, shape.depth > 0.7 ? inks.dark : mixed(inks.dark, inks.middle, 0.4));
        carve(canvas, shape.path, 20, 4, 0.08 + 0.2 * shape.depth, mixed(inks.middle, paper, 0.45));
        break;
    case Role::Cloud:
        canvas.painter.fillPath(shape.path, paper);
        canvas.painter.strokePath(shape.path.simplified(), QPen(inks.dark, 4.5));
        break;
    case Role::Window:
    case Role::Star:
        canvas.painter.fillPath(shape.path, paper);
        break;
    case Role::Boat:
        canvas.painter.fillPath(shape.path, paper);
        canvas.painter.strokePath(shape.path, QPen(inks.dark, 4.5));
        break;
    default:
        canvas.painter.fillPath(shape.path, inks.dark);
        break;
    }
}

void paintMargin(Canvas &canvas, const Inks &inks)
{
    QPainterPath margin;
    margin.addRect(canvas.area().adjusted(-5, -5, 5, 5));
    margin.addRect(canvas.area().adjusted(44, 44, -44, -44));
    canvas.painter.fillPath(margin, paper);
    canvas.painter.setBrush(Qt::NoBrush);
    canvas.painter.setPen(QPen(inks.dark, 9, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    canvas.painter.drawRect(canvas.area().adjusted(44, 44, -44, -44));
    canvas.painter.setPen(Qt::NoPen);
}

} // namespace

void paintPrint(Canvas &canvas)
{
    const Inks inks = inksFor(canvas.scene);
    canvas.painter.setPen(Qt::NoPen);
    paintSky(canvas, inks);
    for (const Shape &shape : canvas.scene.shapes) {
        paintShape(canvas, shape, inks);
    }
    paintMargin(canvas, inks);
}

} // namespace tavro::assistantservice
