#pragma once

#include "engine.h"

namespace tavro::assistantservice {

/// What a model is told about its task, and of the media library. `media`: the items that it is shown, out of a library
/// of `librarySize`.
QString instructions(const QVector<MediaItem> &media, int librarySize);

} // namespace tavro::assistantservice
