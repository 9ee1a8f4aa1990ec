#pragma once

#include "grammar/wordlist.h"

namespace tavro::assistantservice {

/// The words that the playback grammar knows, each list in all languages.
struct Vocabulary {
    static const Vocabulary &instance();

    WordList play;
    /// Words that mean "play" only next to something that can be played: "show", "put", "放".
    WordList weakPlay;
    WordList stop;
    /// Those of the words for "stop" that mean nothing else.
    WordList certainStop;
    WordList pause;
    WordList set;
    WordList relative;
    /// Words for a change that starts from the present volume, unless they say to which ("lower it by 10 %").
    WordList changeBy;
    WordList mute;
    WordList unmute;
    /// With a word for "mute" it means the contrary.
    WordList undo;
    WordList volume;
    WordList layer;
    WordList program;
    WordList output;
    WordList number;
    WordList everything;
    WordList percent;
    WordList half;
    WordList quarter;
    WordList full;
    WordList silent;
    WordList negation;
    WordList question;
    WordList polite;
    WordList joiner;
    /// Words that may stand before a place or a value and belong to it.
    WordList before;
    WordList preposition;
    WordList after;
    WordList filler;
    WordList pronoun;
    WordList generated;
    WordList picture;
    WordList yes;
    WordList last;
    /// "Playing" as what something does.
    WordList running;
    /// Times and conditions.
    WordList timed;
};

} // namespace tavro::assistantservice
