#pragma once

#include "engine.h"

namespace tavro::assistantservice {

/// The media items that a model is told of: all where they are few, else those whose names have most words in common
/// with what the user said, in the order of the library.
QVector<MediaItem> mediaForModel(const QVector<MediaItem> &media, const QVector<ChatMessage> &messages);

} // namespace tavro::assistantservice
