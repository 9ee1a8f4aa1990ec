#include "pictures/styles.h"

namespace tavro::assistantservice {

namespace {

struct Sitter {
    QColor skin;
    QColor hair;
    QColor coat;
    bool longHair = false;
};

Sitter chooseSitter(Canvas &canvas)
{
    const QColor skins[] = {QColor(241, 201, 170), QColor(222, 171, 132), QColor(186, 128, 90), QColor(132, 84, 58)};
    const QColor hairs[] = {QColor(38, 27, 22), QColor(78, 49, 30), QColor(150, 104, 58), QColor(60, 56, 58)};
    const QColor coats[] = {QColor(38, 58, 96), QColor(40, 84, 70), QColor(118, 36, 54), QColor(66, 70, 80)};
    const QColor coat = coats[canvas.random.below(4)];
    return {skins[canvas.random.below(4)], hairs[canvas.random.below(4)], coat, canvas.random.chance(0.5)};
}

// The scene far out of focus: scaled down until no detail is left and up again.
void paintBackground(Canvas &canvas)
{
    const QImage tiny = sketchOf(canvas, 240).scaledToHeight(18, Qt::SmoothTransformation);
    const QImage soft = tiny.scaledToHeight(400, Qt::SmoothTransformation);
    canvas.painter.setRenderHint(QPainter::SmoothPixmapTransform);
    canvas.painter.drawImage(canvas.area(), soft);
    for (int i = 0; i < 44; ++i) {
        const QPointF at(canvas.random.between(0, canvas.scene.width), canvas.random.between(0, 820));
        const double radius = canvas.random.between(14, 58);
        const QColor colour =
            mixed(canvas.scene.palette.light, sampleAt(soft, canvas, at), canvas.random.between(0.2, 0.8));
        canvas.painter.setBrush(withAlpha(colour, canvas.random.between(0.10, 0.32)));
        canvas.painter.setPen(QPen(withAlpha(colour.lighter(120), 0.22), 2.5));
        canvas.painter.drawEllipse(at, radius, radius);
    }
    canvas.painter.setPen(Qt::NoPen);
}

void paintShoulders(Canvas &canvas, const Sitter &sitter, double x)
{
    QPainterPath coat(QPointF(x - 400, 1010));
    coat.cubicTo(QPointF(x - 380, 800), QPointF(x - 240, 762), QPointF(x - 96, 716));
    coat.lineTo(QPointF(x + 96, 716));
    coat.cubicTo(QPointF(x + 240, 762), QPointF(x + 380, 800), QPointF(x + 400, 1010));
    QLinearGradient cloth(x - 400, 0, x + 400, 0);
    cloth.setColorAt(0, sitter.coat.lighter(150));
    cloth.setColorAt(0.35, sitter.coat);
    cloth.setColorAt(1, sitter.coat.darker(220));
    canvas.painter.fillPath(coat, cloth);
    QPainterPath neck(QPointF(x - 70, 590));
    neck.lineTo(QPointF(x + 70, 590));
    neck.cubicTo(QPointF(x + 74, 690), QPointF(x + 84, 712), QPointF(x + 112, 724));
    neck.quadTo(QPointF(x, 850), QPointF(x - 112, 724));
    neck.cubicTo(QPointF(x - 84, 712), QPointF(x - 74, 690), QPointF(x - 70, 590));
    canvas.painter.fillPath(neck, vertical(590, 800, sitter.skin.darker(165), sitter.skin.darker(112)));
}

QPainterPath headShape(double x)
{
    QPainterPath head(QPointF(x, 258));
    head.cubicTo(QPointF(x + 150, 258), QPointF(x + 164, 420), QPointF(x + 140, 512));
    head.cubicTo(QPointF(x + 122, 590), QPointF(x + 66, 660), QPointF(x, 664));
    head.cubicTo(QPointF(x - 66, 660), QPointF(x - 122, 590), QPointF(x - 140, 512));
    head.cubicTo(QPointF(x - 164, 420), QPointF(x - 150, 258), QPointF(x, 258));
    return head;
}

void paintHairBehind(Canvas &canvas, const Sitter &sitter, double x)
{
    QPainterPath hair;
    hair.addEllipse(QPointF(x, 400), 182, 204);
    if (sitter.longHair) {
        hair.addRoundedRect(QRectF(x - 186, 400, 372, 360), 120, 120);
        hair.setFillRule(Qt::WindingFill);
    }
    canvas.painter.fillPath(hair, vertical(200, 760, sitter.hair.lighter(135), sitter.hair.darker(140)));
}

void paintHairInFront(Canvas &canvas, const Sitter &sitter, double x)
{
    QPainterPath fringe(QPointF(x - 160, 440));
    fringe.cubicTo(QPointF(x - 176, 250), QPointF(x - 80, 196), QPointF(x, 198));
    fringe.cubicTo(QPointF(x + 90, 196), QPointF(x + 178, 250), QPointF(x + 160, 440));
    fringe.cubicTo(QPointF(x + 146, 352), QPointF(x + 96, 318), QPointF(x + 40, 316));
    fringe.cubicTo(QPointF(x - 40, 330), QPointF(x - 130, 350), QPointF(x - 160, 440));
    canvas.painter.fillPath(fringe, vertical(190, 440, sitter.hair.lighter(150), sitter.hair));
}

void paintFeatures(Canvas &canvas, const Sitter &sitter, double x)
{
    const QColor line = mixed(sitter.hair, QColor(40, 24, 18), 0.5);
    for (const double side : {-1.0, 1.0}) {
        const QPointF eye(x + side * 58, 458);
        canvas.painter.setBrush(QColor(248, 243, 238));
        canvas.painter.drawEllipse(eye, 25, 12);
        canvas.painter.setBrush(QColor(66, 46, 34));
        canvas.painter.drawEllipse(eye, 11.5, 11.5);
        canvas.painter.setBrush(QColor(12, 9, 8));
        canvas.painter.drawEllipse(eye, 5.5, 5.5);
        canvas.painter.setBrush(QColor(255, 255, 255, 230));
        canvas.painter.drawEllipse(eye - QPointF(4, 4), 3, 3);
        QPainterPath lid(eye - QPointF(29, -3));
        lid.quadTo(eye - QPointF(0, 21), eye + QPointF(29, 3));
        canvas.painter.strokePath(lid, QPen(line, 4, Qt::SolidLine, Qt::RoundCap));
        QPainterPath brow(QPointF(x + side * 26, 424));
        brow.quadTo(QPointF(x + side * 62, 402), QPointF(x + side * 98, 426));
        canvas.painter.strokePath(brow, QPen(withAlpha(line, 0.9), 9, Qt::SolidLine, Qt::RoundCap));
    }
    QPainterPath nose(QPointF(x + 8, 448));
    nose.quadTo(QPointF(x + 22, 520), QPointF(x + 26, 540));
    nose.quadTo(QPointF(x + 4, 558), QPointF(x - 20, 544));
    canvas.painter.strokePath(nose, QPen(withAlpha(sitter.skin.darker(170), 0.6), 5, Qt::SolidLine, Qt::RoundCap));
    QPainterPath lips(QPointF(x - 46, 596));
    lips.cubicTo(QPointF(x - 18, 580), QPointF(x - 8, 586), QPointF(x, 588));
    lips.cubicTo(QPointF(x + 8, 586), QPointF(x + 18, 580), QPointF(x + 46, 596));
    lips.quadTo(QPointF(x, 626), QPointF(x - 46, 596));
    canvas.painter.fillPath(lips, mixed(sitter.skin.darker(125), QColor(176, 62, 66), 0.55));
}

void paintFace(Canvas &canvas, const Sitter &sitter, double x)
{
    const QPainterPath head = headShape(x);
    QRadialGradient light(QPointF(x - 56, 400), 330);
    light.setColorAt(0, sitter.skin.lighter(112));
    light.setColorAt(0.5, sitter.skin);
    light.setColorAt(1, sitter.skin.darker(190));
    canvas.painter.fillPath(head, light);
    for (const double side : {-1.0, 1.0}) {
        const QPointF cheek(x + side * 80, 540);
        canvas.painter.setBrush(glow(cheek, 60, QColor(214, 92, 80, 60)));
        canvas.painter.drawEllipse(cheek, 60, 60);
    }
    paintFeatures(canvas, sitter, x);
}

void paintLens(Canvas &canvas)
{
    const QRectF area = canvas.area();
    canvas.painter.fillRect(area, glow(QPointF(0, 0), 900, withAlpha(canvas.scene.palette.light, 0.22)));
    QRadialGradient corners(area.center(), area.width() * 0.68);
    corners.setColorAt(0.5, QColor(0, 0, 0, 0));
    corners.setColorAt(1.0, QColor(0, 0, 0, 150));
    canvas.painter.fillRect(area, corners);
}

} // namespace

void paintPortrait(Canvas &canvas)
{
    canvas.painter.setPen(Qt::NoPen);
    paintBackground(canvas);
    const Sitter sitter = chooseSitter(canvas);
    const double x = canvas.scene.width * canvas.random.between(0.42, 0.58);
    paintHairBehind(canvas, sitter, x);
    paintShoulders(canvas, sitter, x);
    paintFace(canvas, sitter, x);
    paintHairInFront(canvas, sitter, x);
    paintLens(canvas);
}

} // namespace tavro::assistantservice
