#include "pictures/styles.h"

#include <QtMath>

#include <array>
#include <cmath>

namespace tavro::assistantservice {

namespace {

const std::array<QColor, 9> papers{QColor(28, 92, 168), QColor(232, 74, 52),   QColor(246, 190, 48),
                                   QColor(26, 140, 96), QColor(238, 232, 216), QColor(226, 112, 158),
                                   QColor(22, 40, 84),  QColor(122, 188, 70),  QColor(112, 62, 150)};

QColor paperColour(Canvas &canvas)
{
    return papers[static_cast<size_t>(canvas.random.below(static_cast<int>(papers.size())))];
}

QColor otherPaper(Canvas &canvas, const QColor &than)
{
    QColor colour = paperColour(canvas);
    while (std::abs(colour.lightnessF() - than.lightnessF()) < 0.14 && std::abs(colour.hueF() - than.hueF()) < 0.12) {
        colour = paperColour(canvas);
    }
    return colour;
}

// A leaf like a hand of seaweed: lobes on both sides of a stem, cut with round strokes of the scissors.
QPainterPath leaf(Canvas &canvas, double size)
{
    const int lobes = 3 + canvas.random.below(3);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (int i = 0; i < lobes; ++i) {
        const double along = size * (0.8 - 1.5 * i / lobes);
        for (const double side : {-1.0, 1.0}) {
            const double reach = size * (0.42 + 0.22 * canvas.random.unit());
            QPainterPath lobe(QPointF(0, along + size * 0.12));
            lobe.cubicTo(QPointF(side * reach * 0.7, along + size * 0.05), QPointF(side * reach, along - size * 0.12),
                         QPointF(side * reach, along - size * 0.32));
            lobe.cubicTo(QPointF(side * reach * 0.72, along - size * 0.38),
                         QPointF(side * reach * 0.5, along - size * 0.1), QPointF(0, along - size * 0.2));
            path.addPath(lobe);
        }
    }
    path.addRoundedRect(QRectF(-size * 0.07, -size * 0.86, size * 0.14, size * 1.86), size * 0.07, size * 0.07);
    return path;
}

void paintBlocks(Canvas &canvas)
{
    const int columns = canvas.scene.width > 1250 ? 4 : 3;
    QColor last;
    for (int row = 0; row < 2; ++row) {
        double x = -10;
        for (int column = 0; column < columns; ++column) {
            const double across = canvas.scene.width / columns * canvas.random.between(0.82, 1.18);
            const double right = column + 1 == columns ? canvas.scene.width + 10 : x + across;
            last = otherPaper(canvas, last);
            const double top = row == 0 ? -10 : canvas.scene.horizon - 60 + canvas.random.between(-40, 40);
            canvas.painter.fillRect(QRectF(QPointF(x, top), QPointF(right, 1010)), last);
            x = right;
        }
    }
}

void paintLeaves(Canvas &canvas)
{
    const int count = static_cast<int>(canvas.scene.width / 150);
    for (int i = 0; i < count; ++i) {
        const QPointF at((i + canvas.random.between(0.25, 0.75)) * canvas.scene.width / count,
                         i % 2 ? canvas.random.between(120, 330) : canvas.random.between(720, 880));
        canvas.painter.save();
        canvas.painter.translate(at);
        canvas.painter.rotate(canvas.random.between(-60, 60));
        canvas.painter.fillPath(leaf(canvas, canvas.random.between(80, 132)), paperColour(canvas));
        canvas.painter.restore();
    }
}

void paintSun(Canvas &canvas)
{
    const QPointF centre = canvas.scene.light;
    const bool night = canvas.scene.subject.daytime == Daytime::Night;
    QPainterPath rays;
    constexpr int points = 14;
    for (int i = 0; i < 2 * points; ++i) {
        const double radius = canvas.scene.lightRadius * (i % 2 ? 1.25 : 2.0);
        const QPointF tip = centre + radius * QPointF(std::cos(i * M_PI / points), std::sin(i * M_PI / points));
        i == 0 ? rays.moveTo(tip) : rays.lineTo(tip);
    }
    rays.closeSubpath();
    canvas.painter.fillPath(rays, night ? papers[4] : papers[2]);
    canvas.painter.setBrush(night ? papers[2] : papers[1]);
    canvas.painter.drawEllipse(centre, canvas.scene.lightRadius, canvas.scene.lightRadius);
}

void paintCutOuts(Canvas &canvas)
{
    QColor last = papers[4];
    for (const Shape &shape : canvas.scene.shapes) {
        switch (shape.role) {
        case Role::Far:
        case Role::Ground:
        case Role::City:
        case Role::Water:
            last = otherPaper(canvas, last);
            canvas.painter.fillPath(shape.path, last);
            break;
        case Role::Boat:
        case Role::Tree:
        case Role::Window:
        case Role::Bird:
            canvas.painter.fillPath(shape.path, otherPaper(canvas, last));
            break;
        case Role::Cloud:
            canvas.painter.fillPath(shape.path, papers[4]);
            break;
        case Role::Light:
            paintSun(canvas);
            break;
        default:
            break;
        }
    }
}

} // namespace

void paintMatisse(Canvas &canvas)
{
    canvas.painter.setPen(Qt::NoPen);
    paintBlocks(canvas);
    paintCutOuts(canvas);
    paintLeaves(canvas);
}

} // namespace tavro::assistantservice
