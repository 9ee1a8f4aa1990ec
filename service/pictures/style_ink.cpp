#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

const QColor paper(244, 239, 227);
const QColor ink(26, 28, 34);

void paintPaper(Canvas &canvas)
{
    canvas.painter.fillRect(canvas.area(), paper);
    const QRectF area = canvas.area();
    QRadialGradient age(area.center(), area.width() * 0.7);
    age.setColorAt(0.4, QColor(120, 96, 60, 0));
    age.setColorAt(1.0, QColor(120, 96, 60, 52));
    canvas.painter.fillRect(area, age);
}

// A wash is dark along its upper edge and runs out downwards into mist.
void paintWash(Canvas &canvas, const QPainterPath &path, double strength, double reach)
{
    const double top = path.boundingRect().top();
    for (int layer = 0; layer < 3; ++layer) {
        const QPointF shift(canvas.random.between(-9, 9), canvas.random.between(-5, 9));
        QLinearGradient wash =
            vertical(top, top + reach * (0.8 + 0.25 * layer), withAlpha(ink, strength), withAlpha(ink, 0));
        wash.setColorAt(0.45, withAlpha(ink, strength * 0.42));
        canvas.painter.fillPath(path.translated(shift), wash);
    }
}

// A brush line along the outline that swells and thins.
void paintOutline(Canvas &canvas, const QPainterPath &path, double strength)
{
    const QPolygonF line = path.toFillPolygon();
    double width = 2.0;
    for (int i = 2; i + 3 < line.size(); ++i) {
        width = std::clamp(width + canvas.random.between(-0.8, 0.8), 0.5, 4.5);
        if (line[i].y() < 990 && canvas.random.chance(0.88)) {
            canvas.painter.setPen(QPen(withAlpha(ink, strength), width, Qt::SolidLine, Qt::RoundCap));
            canvas.painter.drawLine(line[i - 1], line[i]);
        }
    }
    canvas.painter.setPen(Qt::NoPen);
}

void paintRipples(Canvas &canvas)
{
    for (int i = 0; i < 40; ++i) {
        const QPointF at(canvas.random.between(0, canvas.scene.width),
                         canvas.scene.horizon + canvas.random.between(20, 330));
        const double length = canvas.random.between(30, 130);
        QPainterPath ripple(at);
        ripple.quadTo(at + QPointF(length / 2, canvas.random.between(-6, 6)), at + QPointF(length, 0));
        canvas.painter.strokePath(ripple,
                                  QPen(withAlpha(ink, canvas.random.between(0.08, 0.26)),
                                       canvas.random.between(0.8, 2.4), Qt::SolidLine, Qt::RoundCap));
    }
}

void paintSeal(Canvas &canvas)
{
    const bool left = canvas.scene.light.x() > canvas.scene.width / 2;
    const QRectF seal(left ? 60 : canvas.scene.width - 124, 850, 64, 64);
    canvas.painter.setBrush(QColor(176, 38, 30, 225));
    canvas.painter.drawRoundedRect(seal, 6, 6);
    canvas.painter.setPen(QPen(paper, 4.5, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 3; ++i) {
        const double y = seal.top() + 15 + 17 * i;
        canvas.painter.drawLine(QPointF(seal.left() + 12, y), QPointF(seal.left() + (i == 1 ? 34 : 52), y));
    }
    canvas.painter.drawLine(QPointF(seal.left() + 42, seal.top() + 26), QPointF(seal.left() + 42, seal.bottom() - 10));
    canvas.painter.setPen(Qt::NoPen);
}

void paintShape(Canvas &canvas, const Shape &shape)
{
    switch (shape.role) {
    case Role::Light:
        canvas.painter.fillPath(shape.path,
                                canvas.scene.subject.daytime == Daytime::Night ? QColor(255, 253, 244, 255)
                                                                               : QColor(196, 56, 40, 190));
        break;
    case Role::Far:
    case Role::Ground:
        paintWash(canvas, shape.path, 0.10 + 0.26 * shape.depth, 260);
        paintOutline(canvas, shape.path, 0.22 + 0.5 * shape.depth);
        break;
    case Role::City:
        paintWash(canvas, shape.path, 0.14 + 0.2 * shape.depth, 420);
        break;
    case Role::Water:
        paintRipples(canvas);
        break;
    case Role::Tree:
        paintWash(canvas, shape.path, 0.32 + 0.24 * shape.depth, 420);
        break;
    case Role::Boat:
    case Role::Bird:
        canvas.painter.fillPath(shape.path, withAlpha(ink, 0.82));
        break;
    default:
        break;
    }
}

} // namespace

void paintInk(Canvas &canvas)
{
    canvas.painter.setPen(Qt::NoPen);
    paintPaper(canvas);
    if (canvas.scene.subject.daytime == Daytime::Night) {
        canvas.painter.fillRect(canvas.area(), vertical(0, 520, withAlpha(ink, 0.42), withAlpha(ink, 0.04)));
    }
    for (const Shape &shape : canvas.scene.shapes) {
        paintShape(canvas, shape);
    }
    paintSeal(canvas);
}

} // namespace tavro::assistantservice
