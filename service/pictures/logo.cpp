#include "pictures/logo.h"

#include "pictures/scene.h"

namespace tavro::assistantservice {

namespace {

constexpr double radius = 46;
constexpr double margin = 40;

QPointF centreFor(int position, double width)
{
    const double left = margin + radius;
    const double right = width - margin - radius;
    const double top = margin + radius;
    const double bottom = Scene::height - margin - radius;
    switch (position) {
    case 1:
        return {right, top};
    case 2:
        return {left, bottom};
    case 3:
        return {right, bottom};
    case 4:
        return {width / 2, Scene::height / 2};
    default:
        return {left, top};
    }
}

} // namespace

void paintLogo(QPainter &painter, double width, int position, double opacity)
{
    const QPointF centre = centreFor(position, width);
    painter.save();
    painter.setOpacity(opacity);
    painter.setPen(QPen(Qt::white, 8));
    painter.setBrush(QColor(0, 0, 0, 110));
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPolygon(QPolygonF({centre + QPointF(-13, -21), centre + QPointF(24, 0), centre + QPointF(-13, 21)}));
    painter.restore();
}

} // namespace tavro::assistantservice
