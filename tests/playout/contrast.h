#pragma once

class QImage;

namespace tavro::testsupport {

/// The contrast ratio, from 1 to 21, of the lightest against the darkest colour in @p image.
double contrastIn(const QImage &image);

} // namespace tavro::testsupport
