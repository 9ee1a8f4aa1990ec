#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

const QColor outline(24, 20, 22);

struct Grid {
    int columns = 0;
    int rows = 0;
    QVector<QPointF> points;

    QPointF at(int column, int row) const { return points[row * (columns + 1) + column]; }
};

Grid makeGrid(Canvas &canvas)
{
    Grid grid;
    grid.rows = 6;
    grid.columns = std::max(4, static_cast<int>(canvas.scene.width / 165));
    const double across = canvas.scene.width / grid.columns;
    const double down = Scene::height / grid.rows;
    for (int row = 0; row <= grid.rows; ++row) {
        for (int column = 0; column <= grid.columns; ++column) {
            const bool inside = row > 0 && row < grid.rows && column > 0 && column < grid.columns;
            const QPointF shift = inside
                ? QPointF(canvas.random.between(-0.42, 0.42) * across, canvas.random.between(-0.42, 0.42) * down)
                : QPointF();
            grid.points << QPointF(column * across, row * down) + shift;
        }
    }
    return grid;
}

QColor cubist(Canvas &canvas, const QColor &colour)
{
    const QColor earths[] = {QColor(196, 152, 88), QColor(120, 84, 58), QColor(92, 116, 138), QColor(208, 190, 156),
                             QColor(160, 74, 52)};
    return mixed(colour, earths[canvas.random.below(5)], canvas.random.between(0.25, 0.7));
}

// Each facet shows the scene from a little beside where it is, and is lit from another side.
void paintFacet(Canvas &canvas, const QImage &sketch, const QPolygonF &facet)
{
    const QRectF bounds = facet.boundingRect();
    const QPointF beside = bounds.center() + QPointF(canvas.random.between(-120, 120), canvas.random.between(-70, 70));
    const QColor colour = cubist(canvas, sampleAt(sketch, canvas, beside));
    const bool turned = canvas.random.chance(0.5);
    QLinearGradient shade(turned ? bounds.topRight() : bounds.topLeft(),
                          turned ? bounds.bottomLeft() : bounds.bottomRight());
    shade.setColorAt(0, colour.lighter(126));
    shade.setColorAt(1, colour.darker(138));
    canvas.painter.setBrush(shade);
    canvas.painter.setPen(QPen(outline, 5.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    canvas.painter.drawPolygon(facet);
}

void paintFacets(Canvas &canvas, const QImage &sketch)
{
    const Grid grid = makeGrid(canvas);
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            const QPointF a = grid.at(column, row);
            const QPointF b = grid.at(column + 1, row);
            const QPointF c = grid.at(column + 1, row + 1);
            const QPointF d = grid.at(column, row + 1);
            const bool falling = canvas.random.chance(0.5);
            paintFacet(canvas, sketch, falling ? QPolygonF({a, b, c}) : QPolygonF({a, b, d}));
            paintFacet(canvas, sketch, falling ? QPolygonF({a, c, d}) : QPolygonF({b, c, d}));
        }
    }
}

// The scene's own outlines, cut up and shifted against each other.
void paintFragments(Canvas &canvas)
{
    for (const Shape &shape : canvas.scene.shapes) {
        const bool wanted = shape.role == Role::Far || shape.role == Role::City || shape.role == Role::Boat
            || shape.role == Role::Tree || shape.role == Role::Light;
        if (!wanted) {
            continue;
        }
        const QPointF shift(canvas.random.between(-26, 26), canvas.random.between(-16, 16));
        const bool solid = shape.role == Role::Boat || shape.role == Role::Light;
        canvas.painter.setOpacity(solid ? 0.95 : 0.24);
        canvas.painter.fillPath(shape.path.translated(shift), cubist(canvas, shape.colour));
        canvas.painter.setOpacity(0.85);
        canvas.painter.strokePath(shape.path.translated(shift),
                                  QPen(outline, 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    canvas.painter.setOpacity(1.0);
}

void paintEye(Canvas &canvas, const QPointF &centre, double size)
{
    QPainterPath eye(centre - QPointF(size, 0));
    eye.quadTo(centre - QPointF(0, size * 0.85), centre + QPointF(size, 0));
    eye.quadTo(centre + QPointF(0, size * 0.85), centre - QPointF(size, 0));
    canvas.painter.setPen(QPen(outline, 6));
    canvas.painter.setBrush(QColor(244, 236, 214));
    canvas.painter.drawPath(eye);
    canvas.painter.setBrush(outline);
    canvas.painter.drawEllipse(centre + QPointF(size * 0.12, 0), size * 0.3, size * 0.34);
}

// A face seen from the front and from the side at once.
void paintFace(Canvas &canvas)
{
    const bool main = canvas.scene.subject.motifs.testFlag(Motif::Person);
    const double size = main ? 330 : 210;
    const QPointF centre(canvas.scene.width * (main ? 0.5 : canvas.random.between(0.2, 0.8)), main ? 500 : 640);
    canvas.painter.setPen(QPen(outline, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath left(centre + QPointF(0, -size));
    left.cubicTo(centre + QPointF(-size * 0.95, -size), centre + QPointF(-size * 0.85, size * 0.9),
                 centre + QPointF(0, size));
    left.lineTo(centre + QPointF(-size * 0.12, size * 0.25));
    left.lineTo(centre + QPointF(-size * 0.30, size * 0.18));
    left.closeSubpath();
    QPainterPath right(centre + QPointF(0, -size));
    right.cubicTo(centre + QPointF(size * 0.8, -size), centre + QPointF(size * 0.95, size * 0.7),
                  centre + QPointF(0, size));
    right.lineTo(centre + QPointF(-size * 0.12, size * 0.25));
    right.lineTo(centre + QPointF(-size * 0.30, size * 0.18));
    right.closeSubpath();
    canvas.painter.setBrush(QColor(226, 178, 120));
    canvas.painter.drawPath(left);
    canvas.painter.setBrush(QColor(86, 116, 150));
    canvas.painter.drawPath(right);
    paintEye(canvas, centre + QPointF(-size * 0.34, -size * 0.22), size * 0.17);
    paintEye(canvas, centre + QPointF(size * 0.26, -size * 0.32), size * 0.21);
    canvas.painter.setBrush(QColor(164, 50, 44));
    canvas.painter.setPen(QPen(outline, 6));
    canvas.painter.drawPolygon(
        QPolygonF({centre + QPointF(-size * 0.26, size * 0.52), centre + QPointF(size * 0.02, size * 0.42),
                   centre + QPointF(size * 0.28, size * 0.50), centre + QPointF(0, size * 0.62)}));
}

} // namespace

void paintPicasso(Canvas &canvas)
{
    const QImage sketch = sketchOf(canvas, 300);
    paintFacets(canvas, sketch);
    paintFragments(canvas);
    paintFace(canvas);
    canvas.painter.setPen(Qt::NoPen);
}

} // namespace tavro::assistantservice
