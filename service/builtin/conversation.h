#pragma once

#include "grammar/playback.h"

namespace tavro::assistantservice {

/// Understands the last question of a conversation. An answer to what the assistant asked back ("the second one") is
/// understood together with the question before it.
Understanding understandConversation(const QVector<ChatMessage> &messages, const MediaNames &names);

} // namespace tavro::assistantservice
