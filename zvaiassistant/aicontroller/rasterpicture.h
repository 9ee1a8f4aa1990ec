#pragma once

#include <QImage>

#include <atomic>

class QByteArray;

namespace tavro::aiassistant {

/// The picture in @p bytes, null where there is none. The format is told from the bytes: PNG, JPEG, GIF, BMP, and WebP
/// and TIFF where Qt reads them. Other formats, more than 134,217,728 pixels and a picture that takes longer than 30 s
/// count as none. Gives up soon, with null, once @p isAbandoned is set. For any thread.
QImage decodeRaster(const QByteArray &bytes, const std::atomic<bool> &isAbandoned);

} // namespace tavro::aiassistant
