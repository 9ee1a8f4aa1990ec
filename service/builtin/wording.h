#pragma once

#include "builtin/phrases.h"
#include "grammar/playback.h"

namespace tavro::assistantservice {

/// Says in the user's language what is being done, or asks for what is missing.
QString describe(const Understanding &understanding, const MediaNames &names, int mediaCount, Language language);

/// The answer to everything that is not about the playout. `switches`: the user has asked for the model or web search.
QString explainNoModel(Language language, bool switches, const QString &example);

/// Says what a picture shows and how it came about.
QString describePicture(const QString &prompt, const QString &style);

} // namespace tavro::assistantservice
