#pragma once

#include <QString>

namespace tavro::assistantservice {

/// What a model is told about its task. Nothing in it comes from the library or the conversation.
QString instructions();

} // namespace tavro::assistantservice
