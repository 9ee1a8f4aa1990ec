#pragma once

#include "pictures/random.h"
#include "pictures/scene.h"

#include <QImage>
#include <QPainter>

#include <atomic>

namespace tavro::assistantservice {

/// What a style paints with. The painter is set to the scene's units.
struct Canvas {
    QPainter &painter;
    const Scene &scene;
    Random random;
    const std::atomic<bool> &cancelled;

    QRectF area() const { return {0, 0, scene.width, Scene::height}; }
};

// One for each style.
void paintPlain(Canvas &canvas);
void paintPortrait(Canvas &canvas);
void paintInk(Canvas &canvas);
void paintWatercolor(Canvas &canvas);
void paintFlat(Canvas &canvas);
void paintLandscape(Canvas &canvas);
void paintPrint(Canvas &canvas);
void paintMonet(Canvas &canvas);
void paintPicasso(Canvas &canvas);
void paintRembrandt(Canvas &canvas);
void paintMatisse(Canvas &canvas);

/// The scene as the landscape style paints it, small: colours for styles that sample them.
QImage sketchOf(const Canvas &canvas, int height);
QColor sampleAt(const QImage &sketch, const Canvas &canvas, const QPointF &point);

QLinearGradient vertical(double top, double bottom, const QColor &above, const QColor &below);
/// A light that fades out towards its edge.
QRadialGradient glow(const QPointF &centre, double radius, const QColor &colour);

} // namespace tavro::assistantservice
