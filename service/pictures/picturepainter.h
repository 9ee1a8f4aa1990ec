#pragma once

#include "engine.h"

#include <QImage>

namespace tavro::assistantservice {

/// The picture of a request; the same request always gives the same picture. Null where there is no memory for it.
QImage paintPicture(const PictureRequest &request, const std::atomic<bool> &cancelled);

/// Stamps the service's mark onto a finished picture, where the request wants it.
void stampLogo(QImage &image, const PictureRequest &request);

/// The picture as a file; empty once `cancelled` is set.
QByteArray encodePng(const QImage &image, const std::atomic<bool> &cancelled);

} // namespace tavro::assistantservice
