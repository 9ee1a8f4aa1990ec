#include "pictures/shapes.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

// Halves every piece of the line again and again and moves the new point up or down.
QVector<double> displaced(Random &random, int steps, double roughness)
{
    QVector<double> heights{random.between(0.1, 0.6), random.between(0.1, 0.6)};
    double swing = 0.5;
    for (int step = 0; step < steps; ++step) {
        QVector<double> finer;
        for (int i = 0; i + 1 < heights.size(); ++i) {
            const double middle = (heights[i] + heights[i + 1]) / 2 + random.between(-swing, swing);
            finer << heights[i] << std::clamp(middle, 0.0, 1.0);
        }
        finer << heights.last();
        heights = finer;
        swing *= roughness;
    }
    return heights;
}

} // namespace

QPainterPath ridge(Random &random, double width, double top, double height, double roughness, double bottom)
{
    const QVector<double> heights = displaced(random, 7, roughness);
    QPainterPath path(QPointF(-10, bottom));
    for (int i = 0; i < heights.size(); ++i) {
        const double x = -10 + (width + 20) * i / (heights.size() - 1);
        path.lineTo(x, top + height * (1 - heights[i]));
    }
    path.lineTo(width + 10, bottom);
    path.closeSubpath();
    return path;
}

QPainterPath rollingHill(Random &random, double width, double top, double height, double bottom)
{
    const double phase = random.between(0, 2 * M_PI);
    const double waves = random.between(0.7, 1.6);
    const double second = random.between(0, 2 * M_PI);
    QPainterPath path(QPointF(-10, bottom));
    constexpr int points = 80;
    for (int i = 0; i <= points; ++i) {
        const double t = static_cast<double>(i) / points;
        const double wave = 0.5 + 0.36 * std::sin(phase + t * waves * 2 * M_PI) + 0.14 * std::sin(second + t * 9);
        path.lineTo(-10 + (width + 20) * t, top + height * wave);
    }
    path.lineTo(width + 10, bottom);
    path.closeSubpath();
    return path;
}

QPainterPath skyline(Random &random, double width, double ground, double tallest, double bottom)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const double centre = random.between(0.3, 0.7) * width;
    for (double x = -random.between(0, 30); x < width;) {
        const double across = random.between(34, 84);
        const double nearCentre = std::exp(-std::pow((x - centre) / (0.32 * width), 2));
        const double height = tallest * (0.18 + 0.82 * nearCentre * random.between(0.45, 1.0));
        path.addRect(x, ground - height, across, bottom - ground + height);
        if (random.chance(0.22)) {
            path.addRect(x + across * 0.46, ground - height - tallest * 0.16, across * 0.08, tallest * 0.17);
        } else if (random.chance(0.3)) {
            path.addRect(x + across * 0.2, ground - height - tallest * 0.06, across * 0.6, tallest * 0.07);
        }
        x += across + random.between(-6, 14);
    }
    return path;
}

QPainterPath windows(Random &random, const QPainterPath &buildings, double share)
{
    const QRectF bounds = buildings.boundingRect();
    QPainterPath path;
    for (double y = bounds.top() + 12; y < bounds.bottom(); y += 17) {
        for (double x = bounds.left() + 8; x < bounds.right(); x += 13) {
            const QRectF window(x, y, 6, 9);
            if (random.chance(share) && buildings.contains(window.center())) {
                path.addRect(window);
            }
        }
    }
    return path;
}

QPainterPath conifer(const QPointF &foot, double height)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRect(foot.x() - height * 0.03, foot.y() - height * 0.2, height * 0.06, height * 0.2);
    for (int tier = 0; tier < 3; ++tier) {
        const double base = foot.y() - height * (0.12 + 0.26 * tier);
        const double half = height * (0.24 - 0.055 * tier);
        path.addPolygon(
            QPolygonF({{foot.x() - half, base}, {foot.x(), base - height * 0.42}, {foot.x() + half, base}}));
        path.closeSubpath();
    }
    return path;
}

QPainterPath roundTree(Random &random, const QPointF &foot, double height)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRect(foot.x() - height * 0.04, foot.y() - height * 0.45, height * 0.08, height * 0.45);
    for (int i = 0; i < 6; ++i) {
        const QPointF centre = foot + QPointF(random.between(-0.2, 0.2) * height, -random.between(0.5, 0.85) * height);
        const double radius = random.between(0.16, 0.25) * height;
        path.addEllipse(centre, radius, radius * 0.9);
    }
    return path;
}

QPainterPath cloud(Random &random, const QPointF &centre, double width)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(QRectF(centre.x() - width / 2, centre.y() - width * 0.06, width, width * 0.12), width * 0.06,
                        width * 0.06);
    for (int i = 0; i < 4; ++i) {
        const double x = centre.x() + width * (-0.27 + 0.18 * i);
        const double radius = width * random.between(0.10, 0.17);
        path.addEllipse(QPointF(x, centre.y() - radius * 0.35), radius, radius * 0.86);
    }
    return path;
}

QPainterPath boat(const QPointF &waterline, double size)
{
    QPainterPath path(waterline + QPointF(-size * 0.6, -size * 0.16));
    path.lineTo(waterline + QPointF(size * 0.66, -size * 0.16));
    path.lineTo(waterline + QPointF(size * 0.42, size * 0.06));
    path.lineTo(waterline + QPointF(-size * 0.42, size * 0.06));
    path.closeSubpath();
    path.addRect(QRectF(waterline + QPointF(-size * 0.02, -size * 1.3), QSizeF(size * 0.04, size * 1.16)));
    path.addPolygon(
        QPolygonF({waterline + QPointF(size * 0.05, -size * 1.28), waterline + QPointF(size * 0.56, -size * 0.28),
                   waterline + QPointF(size * 0.05, -size * 0.28)}));
    path.closeSubpath();
    path.addPolygon(
        QPolygonF({waterline + QPointF(-size * 0.05, -size * 1.1), waterline + QPointF(-size * 0.44, -size * 0.28),
                   waterline + QPointF(-size * 0.05, -size * 0.28)}));
    path.closeSubpath();
    return path;
}

QPainterPath bird(const QPointF &centre, double size)
{
    QPainterPath path(centre + QPointF(-size, -size * 0.3));
    path.quadTo(centre + QPointF(-size * 0.45, -size * 0.55), centre);
    path.quadTo(centre + QPointF(size * 0.45, -size * 0.55), centre + QPointF(size, -size * 0.3));
    path.quadTo(centre + QPointF(size * 0.45, -size * 0.36), centre + QPointF(0, size * 0.14));
    path.quadTo(centre + QPointF(-size * 0.45, -size * 0.36), centre + QPointF(-size, -size * 0.3));
    return path;
}

QPainterPath star(const QPointF &centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

} // namespace tavro::assistantservice
