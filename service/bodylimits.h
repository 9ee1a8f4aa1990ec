#pragma once

#include <QSize>
#include <QtGlobal>

namespace tavro::assistantservice {

/// What a request body may hold. Counts are entries, lengths are UTF-16 units.
struct BodyLimits {
    int messages = 10000;
    int messageLength = 100000;
    int mediaItems = 200000;
    int mediaTextLength = 4096;
    int promptLength = 10000;
    int shortTextLength = 1000;
    QSize smallestPicture{16, 16};
    QSize largestPicture{7680, 4320};
};

} // namespace tavro::assistantservice
