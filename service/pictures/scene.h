#pragma once

#include "pictures/colours.h"

#include <QPainterPath>
#include <QVector>

namespace tavro::assistantservice {

enum class Role { Star, Light, Cloud, Far, City, Window, Water, Ground, Tree, Boat, Bird };

/// One thing in a scene. Depth goes from 0 (far) to 1 (near).
struct Shape {
    Role role = Role::Ground;
    double depth = 0.0;
    QPainterPath path;
    QColor colour;
};

/// What is to be painted, in units: 1000 high and `width` wide. Shapes are in order from far to near.
struct Scene {
    Subject subject;
    Palette palette;
    double width = 1000.0;
    double horizon = 600.0;
    QPointF light;
    double lightRadius = 60.0;
    QVector<Shape> shapes;

    static constexpr double height = 1000.0;
};

Scene composeScene(const Subject &subject, double width);

} // namespace tavro::assistantservice
