#pragma once

#include "grammar/wordlist.h"

namespace tavro::assistantservice {

/// Words by which an operator asks a model for playback, beside those of the built-in grammar (Vocabulary): a model
/// understands more ways to say it. Each list in all languages of the panel.
struct WishWords {
    static const WishWords &instance();

    WordList play;
    WordList stop;
    WordList volume;
    WordList everything;
    /// What makes a request of a question: "how about ...", "it is too loud".
    WordList proposal;
    /// Answers by which nothing is wanted.
    WordList refusal;
    WordList consent;
    /// Longer words whose signs mean something of the above by themselves.
    WordList other;
};

} // namespace tavro::assistantservice
