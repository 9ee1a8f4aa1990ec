#pragma once

#include "grammar/clause.h"
#include "grammar/places.h"

namespace tavro::assistantservice {

/// Where a clause's verb stands: the index of its first token, -1 where there is none, and how many tokens it has.
struct Verb {
    int index = -1;
    int length = 0;
};

enum class VerbKind { None, Play, WeakPlay, Assign, Stop, Unsupported, Unmute, Mute, Set };

struct FoundVerb {
    VerbKind kind = VerbKind::None;
    Verb verb;
    /// Where its second word stands ("off" in "turn layer 2 off"), or -1.
    int particle = -1;
};

/// Length of the verb at @p index, whether or not it is the request's verb; 0 where there is none.
int verbLengthAt(const Tokens &tokens, int index);

/// True where nothing of weight stands before @p index: a verb there is the request's verb.
bool isLeading(const Clause &clause, int index);

/// What the clause asks to be done. Words like "set" count only where it is @p aboutVolume.
FoundVerb findVerb(const Clause &clause, bool aboutVolume);

/// The same, of the words for playing alone.
FoundVerb findPlayVerb(const Clause &clause);

/// "Set layer 2 to 30": a place, a number and nothing else.
bool setsBareNumber(Clause clause, const Places &places);

/// "Do not play ..."
bool isNegated(const Clause &clause, const Verb &verb);

} // namespace tavro::assistantservice
