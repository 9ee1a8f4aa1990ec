#pragma once

#include "grammar/tokens.h"

namespace tavro::assistantservice {

/// A number found in a sentence, in digits or words.
struct Number {
    /// Tokens that it takes; 0 where there is none.
    int length = 0;
    double value = 0.0;
    /// "second", "2nd", "第二" rather than "two".
    bool ordinal = false;
    /// Written with a decimal point.
    bool decimal = false;

    bool isWhole() const;
};

/// The number that begins at the token `from`, its minus included.
Number numberAt(const Tokens &tokens, int from);

/// "two" and "二" as "2", for comparing names; other texts as they are.
QString digitsForWord(const QString &word);

} // namespace tavro::assistantservice
