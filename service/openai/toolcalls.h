#pragma once

#include "grammar/playback.h"
#include "openai/chatreply.h"

namespace tavro::assistantservice {

/// What the calls ask for, each checked: the tool is one of ours, the media item is in the library, the numbers are in
/// range. Where one is wrong the result has a problem, and nothing is to be carried out.
Understanding understandCalls(const QVector<ToolCall> &calls, const MediaNames &names, const QVector<MediaItem> &media);

} // namespace tavro::assistantservice
