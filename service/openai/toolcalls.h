#pragma once

#include "grammar/playback.h"
#include "openai/chatreply.h"
#include "openai/mediaselection.h"

namespace tavro::assistantservice {

/// What the calls ask for, each checked: the tool is one of ours, the media item is in the library, the numbers are in
/// range. Where one is wrong the result has a problem, and nothing is to be carried out. `shown`: what the model knows
/// of the library, under the ids that it was shown.
Understanding understandCalls(const QVector<ToolCall> &calls, const MediaNames &names, const QVector<MediaItem> &media,
                              const QVector<ShownItem> &shown);

} // namespace tavro::assistantservice
