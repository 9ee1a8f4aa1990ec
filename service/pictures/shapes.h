#pragma once

#include "pictures/random.h"

#include <QPainterPath>
#include <QVector>

namespace tavro::assistantservice {

// The building blocks of a scene, in units: a picture is 1000 units high. All close at the lower edge that they are
// given.

QPainterPath ridge(Random &random, double width, double top, double height, double roughness, double bottom);
QPainterPath rollingHill(Random &random, double width, double top, double height, double bottom);
QPainterPath skyline(Random &random, double width, double ground, double tallest, double bottom);
/// Lit windows on a skyline: small rectangles inside it.
QPainterPath windows(Random &random, const QPainterPath &buildings, double share);
QPainterPath conifer(const QPointF &foot, double height);
QPainterPath roundTree(Random &random, const QPointF &foot, double height);
QPainterPath cloud(Random &random, const QPointF &centre, double width);
QPainterPath boat(const QPointF &waterline, double size);
QPainterPath bird(const QPointF &centre, double size);
QPainterPath star(const QPointF &centre, double radius);

} // namespace tavro::assistantservice
