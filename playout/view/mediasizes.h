#pragma once

#include <QSize>

namespace tavro::playout {

// px; cells are on the grid, a thumbnail is at 16:9.
constexpr int gridStep = 8;
constexpr QSize thumbnailSize{112, 63};
constexpr int mediaNameHeight = 25;
constexpr QSize mediaCellSize{thumbnailSize.width() + gridStep, thumbnailSize.height() + mediaNameHeight + gridStep};

} // namespace tavro::playout
