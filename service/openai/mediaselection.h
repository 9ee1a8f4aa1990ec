#pragma once

#include "engine.h"

namespace tavro::assistantservice {

/// A media item as a model is shown it: name and id of at most 200 characters, free of invisible ones. An id that is
/// not so has a short one in its place.
struct ShownItem {
    QString id;
    QString name;
    /// In the library.
    int index = -1;
};

/// The media items that a model is told of: all where they are few, else those whose names have most words in common
/// with what the user said, in the order of the library. No two have one id; of such the first is shown.
QVector<ShownItem> mediaForModel(const QVector<MediaItem> &media, const QVector<ChatMessage> &messages);

} // namespace tavro::assistantservice
