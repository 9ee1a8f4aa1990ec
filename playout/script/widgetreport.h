#pragma once

#include <QString>

class QWidget;

namespace tavro::playout {

/// A control for a reader outside of the program, in one line of JSON: "name", "text" (what it shows), "enabled", and
/// its place "x", "y", "width", "height" on the screen in the screen's own pixels.
QString reportOn(const QWidget &widget);

} // namespace tavro::playout
