#include "pictures/styles.h"

#include <algorithm>

namespace tavro::assistantservice {

QImage sketchOf(const Canvas &canvas, int height)
{
    const double scale = height / Scene::height;
    QImage image(std::max(1, static_cast<int>(canvas.scene.width * scale)), height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    Canvas small{painter, canvas.scene, canvas.random, canvas.cancelled};
    paintLandscape(small);
    return image;
}

QColor sampleAt(const QImage &sketch, const Canvas &canvas, const QPointF &point)
{
    const int x = static_cast<int>(point.x() / canvas.scene.width * sketch.width());
    const int y = static_cast<int>(point.y() / Scene::height * sketch.height());
    return sketch.pixelColor(std::clamp(x, 0, sketch.width() - 1), std::clamp(y, 0, sketch.height() - 1));
}

QLinearGradient vertical(double top, double bottom, const QColor &above, const QColor &below)
{
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, above);
    gradient.setColorAt(1, below);
    return gradient;
}

QRadialGradient glow(const QPointF &centre, double radius, const QColor &colour)
{
    QRadialGradient gradient(centre, radius);
    gradient.setColorAt(0, colour);
    gradient.setColorAt(0.4, withAlpha(colour, colour.alphaF() * 0.4));
    gradient.setColorAt(1, withAlpha(colour, 0));
    return gradient;
}

} // namespace tavro::assistantservice
