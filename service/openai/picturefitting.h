#pragma once

#include <QImage>
#include <QVector>

namespace tavro::assistantservice {

/// The size to ask a server for: of those that it offers the one nearest in shape, of several such the largest. Where
/// it offers none in particular, the wanted one.
QSize nearestSize(const QSize &wanted, const QVector<QSize> &offered);

/// The middle of the picture in the shape of the size, scaled to it.
QImage fitted(const QImage &picture, const QSize &size);

} // namespace tavro::assistantservice
