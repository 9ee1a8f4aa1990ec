#pragma once

#include "engine.h"
#include "grammar/language.h"
#include "openai/chatreply.h"
#include "openai/mediaselection.h"

namespace tavro::assistantservice {

/// What becomes of a model's answer: its text, and the commands of its calls where each is right and the operator has
/// asked for it. `shown`: the media items that the model was shown. `language`: the operator's.
TextResult chatResult(const ChatReply &reply, const TextRequest &request, const QVector<ShownItem> &shown,
                      Language language);

} // namespace tavro::assistantservice
