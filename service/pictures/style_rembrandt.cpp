#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

// Everything in umber and gold, as under old varnish.
QImage varnished(const QImage &sketch)
{
    QImage result = sketch;
    for (int y = 0; y < result.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const QColor colour(line[x]);
            const double light = colour.lightnessF();
            const QColor umber = hsl(24 + 18 * light, 0.52, 0.04 + 0.46 * light * light + 0.20 * light);
            line[x] = mixed(umber, colour.darker(240), 0.22).rgb();
        }
    }
    return result;
}

// Broad strokes that follow the light.
void paintStrokes(Canvas &canvas, const QImage &colours)
{
    for (int i = 0; i < 2600 && !canvas.cancelled; ++i) {
        const QPointF at(canvas.random.between(0, canvas.scene.width), canvas.random.between(0, 1000));
        const double length = canvas.random.between(16, 60);
        const QColor colour = sampleAt(colours, canvas, at).lighter(static_cast<int>(canvas.random.between(84, 124)));
        canvas.painter.setPen(QPen(withAlpha(colour, 0.5), canvas.random.between(4, 13), Qt::SolidLine, Qt::RoundCap));
        canvas.painter.drawLine(at, at + QPointF(length, canvas.random.between(-length, length) * 0.35));
    }
    canvas.painter.setPen(Qt::NoPen);
}

void paintGlints(Canvas &canvas)
{
    for (const Shape &shape : canvas.scene.shapes) {
        if (shape.role == Role::Window || shape.role == Role::Star) {
            canvas.painter.fillPath(shape.path, QColor(255, 196, 96, 150));
        } else if (shape.role == Role::Boat || shape.role == Role::Tree) {
            canvas.painter.fillPath(shape.path, QColor(30, 17, 8, 150));
        }
    }
}

// Hinted at rather than drawn: the lit side tells the rest.
void paintFeatures(Canvas &canvas, double x)
{
    const QColor shadow(44, 22, 10);
    canvas.painter.setBrush(withAlpha(shadow, 0.55));
    canvas.painter.drawEllipse(QPointF(x - 42, 438), 27, 13);
    canvas.painter.drawEllipse(QPointF(x + 40, 440), 25, 14);
    canvas.painter.setBrush(QColor(20, 10, 5));
    canvas.painter.drawEllipse(QPointF(x - 40, 439), 7, 7);
    canvas.painter.drawEllipse(QPointF(x + 40, 441), 7, 7);
    QPainterPath nose(QPointF(x + 4, 440));
    nose.quadTo(QPointF(x + 24, 496), QPointF(x + 18, 512));
    nose.quadTo(QPointF(x - 4, 524), QPointF(x - 20, 510));
    canvas.painter.strokePath(nose, QPen(withAlpha(shadow, 0.7), 6, Qt::SolidLine, Qt::RoundCap));
    QPainterPath moustache(QPointF(x - 46, 544));
    moustache.quadTo(QPointF(x - 16, 522), QPointF(x, 532));
    moustache.quadTo(QPointF(x + 18, 522), QPointF(x + 48, 546));
    canvas.painter.strokePath(moustache, QPen(withAlpha(QColor(70, 40, 20), 0.85), 9, Qt::SolidLine, Qt::RoundCap));
    canvas.painter.setBrush(withAlpha(QColor(130, 54, 36), 0.8));
    canvas.painter.drawEllipse(QPointF(x, 556), 26, 7);
}

// A figure in the dark half whose one side the light finds.
void paintSitter(Canvas &canvas)
{
    const double x = canvas.scene.width * 0.5;
    QPainterPath cloak(QPointF(x - 300, 1010));
    cloak.cubicTo(QPointF(x - 260, 640), QPointF(x - 110, 610), QPointF(x, 600));
    cloak.cubicTo(QPointF(x + 120, 610), QPointF(x + 270, 660), QPointF(x + 300, 1010));
    canvas.painter.fillPath(cloak, vertical(600, 1000, QColor(46, 26, 14), QColor(12, 7, 4)));
    QPainterPath collar;
    collar.addEllipse(QPointF(x, 622), 128, 40);
    canvas.painter.fillPath(collar, vertical(580, 664, QColor(236, 216, 176), QColor(120, 88, 54)));
    QPainterPath head;
    head.addEllipse(QPointF(x, 460), 104, 142);
    QRadialGradient face(QPointF(x - 46, 420), 190);
    face.setColorAt(0, QColor(244, 198, 142));
    face.setColorAt(0.45, QColor(176, 112, 64));
    face.setColorAt(1, QColor(30, 16, 8));
    canvas.painter.fillPath(head, face);
    paintFeatures(canvas, x);
    QPainterPath hat;
    hat.addEllipse(QPointF(x, 352), 190, 44);
    hat.addRoundedRect(QRectF(x - 106, 234, 212, 116), 50, 50);
    hat.setFillRule(Qt::WindingFill);
    canvas.painter.fillPath(hat, vertical(230, 400, QColor(40, 24, 14), QColor(8, 5, 3)));
}

void paintLightAndDark(Canvas &canvas)
{
    const QPointF source(canvas.scene.light.x(), canvas.scene.horizon * 0.62);
    canvas.painter.setCompositionMode(QPainter::CompositionMode_Screen);
    canvas.painter.fillRect(canvas.area(), glow(source, 620, QColor(226, 150, 62, 168)));
    canvas.painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    QRadialGradient dark(source, std::max(canvas.scene.width, Scene::height) * 0.78);
    dark.setColorAt(0.18, QColor(14, 8, 4, 0));
    dark.setColorAt(0.62, QColor(14, 8, 4, 120));
    dark.setColorAt(1.0, QColor(10, 6, 3, 225));
    canvas.painter.fillRect(canvas.area(), dark);
}

} // namespace

void paintRembrandt(Canvas &canvas)
{
    const QImage colours = varnished(sketchOf(canvas, 500));
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.drawImage(canvas.area(), colours);
    paintStrokes(canvas, colours);
    paintGlints(canvas);
    if (canvas.scene.subject.motifs.testFlag(Motif::Person)) {
        paintLightAndDark(canvas);
        paintSitter(canvas);
    } else {
        paintLightAndDark(canvas);
    }
}

} // namespace tavro::assistantservice
