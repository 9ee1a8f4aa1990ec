#pragma once

#include <QString>

namespace tavro::playout {

/// One item of the media library.
struct MediaItem {
    enum class Kind { Picture, Animation };

    QString id; ///< unique in the library, and the same from run to run
    QString name; ///< what the operator reads and says
    QString path;
    Kind kind = Kind::Picture;
    bool generated = false; ///< drawn by the assistant
};

} // namespace tavro::playout
