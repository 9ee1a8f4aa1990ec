#pragma once

#include "grammar/medianames.h"
#include "grammar/tokens.h"

namespace tavro::assistantservice {

/// Marks the words of whole media names in a sentence as quoted, so that "Program 1 Opener" is not read as a program.
/// A name that reads like a request ("Stop All", "Layer 2") stays as it is.
void quoteWholeNames(Tokens &tokens, const MediaNames &names);

/// The same for the name that stands at `from` or behind an article there, even where it reads like a place or a volume
/// ("Volume 1") or is an article itself ("A"). False where there is none.
bool quoteNameAt(Tokens &tokens, int from, const MediaNames &names);

} // namespace tavro::assistantservice
