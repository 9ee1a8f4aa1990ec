#pragma once

#include <QPainter>

namespace tavro::assistantservice {

/// Stamps the service's mark, a play sign in a ring, onto a picture in units. Positions 0 to 3 are the corners (upper
/// left, upper right, lower left, lower right), 4 the middle; any other counts as 0.
void paintLogo(QPainter &painter, double width, int position, double opacity);

} // namespace tavro::assistantservice
