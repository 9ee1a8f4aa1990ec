#pragma once

#include "engine.h"

namespace tavro::assistantservice {

/// Where the prompt asks for playing the picture ("..., play it on layer 2"): adds the commands for that, and says so
/// in the description.
void addPlayback(PictureResult &result, const QString &prompt);

} // namespace tavro::assistantservice
