#pragma once

#include "grammar/tokens.h"

#include <initializer_list>

namespace tavro::assistantservice {

class WordList;

using WordLists = std::initializer_list<const WordList *>;

/// Length of the longest phrase of the lists at @p index, 0 where there is none.
int longestAt(WordLists lists, const Tokens &tokens, int index);

/// Whether the tokens are phrases of the lists, and pauses, and nothing else. Quoted words are names, not phrases.
bool consistsOf(WordLists lists, const Tokens &tokens);

/// The tokens that are no phrases of the lists, and no pauses.
Tokens unexplained(WordLists lists, const Tokens &tokens);

/// Without words like "the", "clip", "的" at both ends.
Tokens trimmed(Tokens tokens);

/// Without such words anywhere.
Tokens withoutFillers(const Tokens &tokens);

Tokens withoutPauses(const Tokens &tokens);

/// Those that stand in quotation marks.
Tokens quotedOnly(const Tokens &tokens);

} // namespace tavro::assistantservice
