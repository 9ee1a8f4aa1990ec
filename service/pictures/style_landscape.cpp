#include "pictures/styles.h"

#include <QtMath>

namespace tavro::assistantservice {

namespace {

void paintSky(Canvas &canvas)
{
    const Scene &scene = canvas.scene;
    QLinearGradient sky = vertical(0, scene.horizon, scene.palette.skyTop, scene.palette.skyBottom);
    sky.setColorAt(0.55, mixed(scene.palette.skyTop, scene.palette.skyBottom, 0.45));
    canvas.painter.fillRect(canvas.area(), sky);
    const bool night = scene.subject.daytime == Daytime::Night;
    canvas.painter.fillRect(canvas.area(),
                            glow(scene.light, night ? 330 : 620, withAlpha(scene.palette.light, night ? 0.35 : 0.75)));
}

// Lighter towards the foot, where the mist gathers.
void paintFar(Canvas &canvas, const Shape &shape)
{
    const QRectF bounds = shape.path.boundingRect();
    const QColor mist = mixed(shape.colour, canvas.scene.palette.skyBottom, 0.55 * (1.1 - shape.depth));
    canvas.painter.fillPath(shape.path, vertical(bounds.top(), canvas.scene.horizon + 40, shape.colour, mist));
    if (canvas.scene.subject.motifs.testFlag(Motif::Snow) || canvas.scene.subject.motifs.testFlag(Motif::Mountains)) {
        const double cap = canvas.scene.subject.motifs.testFlag(Motif::Snow) ? 0.95 : 0.5;
        const QColor white = withAlpha(mixed(canvas.scene.palette.light, Qt::white, 0.6), cap * (0.9 - shape.depth));
        canvas.painter.fillPath(shape.path, vertical(bounds.top(), bounds.top() + 190, white, withAlpha(white, 0)));
    }
}

void paintReflections(Canvas &canvas)
{
    const Scene &scene = canvas.scene;
    for (int i = 0; i < 150; ++i) {
        const double depth = canvas.random.unit();
        const double y = scene.horizon + 6 + depth * depth * 380;
        const double spread = 26 + depth * 160;
        const double x = scene.light.x() + canvas.random.between(-spread, spread);
        const double length = canvas.random.between(14, 40) * (0.5 + depth);
        canvas.painter.setPen(QPen(withAlpha(scene.palette.light, 0.5 * (1 - 0.6 * depth)), 1.6 + 3 * depth,
                                   Qt::SolidLine, Qt::RoundCap));
        canvas.painter.drawLine(QPointF(x - length, y), QPointF(x + length, y));
    }
    for (int i = 0; i < 130; ++i) {
        const double depth = canvas.random.unit();
        const QPointF at(canvas.random.between(0, scene.width), scene.horizon + 4 + depth * 430);
        const double length = 12 + 70 * depth;
        canvas.painter.setPen(QPen(withAlpha(mixed(scene.palette.water, Qt::white, 0.7), 0.16), 1.2 + 2.5 * depth,
                                   Qt::SolidLine, Qt::RoundCap));
        canvas.painter.drawLine(at - QPointF(length, 0), at + QPointF(length, 0));
    }
    canvas.painter.setPen(Qt::NoPen);
}

// What stands on the horizon, upside down and faint.
void paintMirror(Canvas &canvas)
{
    const Scene &scene = canvas.scene;
    canvas.painter.save();
    canvas.painter.setClipRect(QRectF(0, scene.horizon, scene.width, Scene::height - scene.horizon));
    canvas.painter.translate(0, 2 * scene.horizon);
    canvas.painter.scale(1, -1);
    for (const Shape &shape : scene.shapes) {
        if (shape.role == Role::Far || shape.role == Role::City || shape.role == Role::Window) {
            QPainterPath above;
            above.addRect(-20, -20, scene.width + 40, scene.horizon + 20);
            canvas.painter.setOpacity(shape.role == Role::Window ? 0.4 : 0.28);
            canvas.painter.setClipPath(above, Qt::IntersectClip);
            canvas.painter.fillPath(shape.path, shape.colour);
        }
    }
    canvas.painter.restore();
}

void paintWater(Canvas &canvas, const Shape &shape)
{
    const Scene &scene = canvas.scene;
    const QColor farWater = mixed(shape.colour, scene.palette.skyBottom, 0.55);
    canvas.painter.fillPath(
        shape.path, vertical(scene.horizon, Scene::height, farWater, mixed(shape.colour, scene.palette.near, 0.5)));
    paintMirror(canvas);
    paintReflections(canvas);
}

void paintNear(Canvas &canvas, const Shape &shape)
{
    const QRectF bounds = shape.path.boundingRect();
    const QColor lit = mixed(shape.colour, canvas.scene.palette.light, 0.22);
    const QColor shade = mixed(shape.colour, canvas.scene.palette.near, 0.55);
    canvas.painter.fillPath(shape.path, vertical(bounds.top(), bounds.top() + 230, lit, shade));
}

void paintRain(Canvas &canvas)
{
    canvas.painter.setPen(QPen(QColor(255, 255, 255, 60), 1.3));
    for (int i = 0; i < 420; ++i) {
        const QPointF at(canvas.random.between(0, canvas.scene.width + 60), canvas.random.between(-20, 980));
        canvas.painter.drawLine(at, at + QPointF(-9, canvas.random.between(26, 52)));
    }
    canvas.painter.setPen(Qt::NoPen);
}

void paintSnowfall(Canvas &canvas)
{
    canvas.painter.setBrush(QColor(255, 255, 255, 190));
    for (int i = 0; i < 260; ++i) {
        const double size = canvas.random.between(1.2, 4.2);
        canvas.painter.drawEllipse(
            QPointF(canvas.random.between(0, canvas.scene.width), canvas.random.between(0, 1000)), size, size);
    }
}

void paintShape(Canvas &canvas, const Shape &shape)
{
    switch (shape.role) {
    case Role::Far:
        paintFar(canvas, shape);
        break;
    case Role::Water:
        paintWater(canvas, shape);
        break;
    case Role::City:
    case Role::Ground:
        paintNear(canvas, shape);
        break;
    default:
        canvas.painter.fillPath(shape.path, shape.colour);
        break;
    }
}

} // namespace

void paintLandscape(Canvas &canvas)
{
    canvas.painter.setPen(Qt::NoPen);
    paintSky(canvas);
    for (const Shape &shape : canvas.scene.shapes) {
        paintShape(canvas, shape);
    }
    if (canvas.scene.subject.motifs.testFlag(Motif::Rain)) {
        paintRain(canvas);
    }
    if (canvas.scene.subject.motifs.testFlag(Motif::Snow)) {
        paintSnowfall(canvas);
    }
}

} // namespace tavro::assistantservice
