#pragma once

#include "grammar/language.h"
#include "grammar/playback.h"

namespace tavro::assistantservice {

/// What the operator is told about an answer, in his language.
enum class Notice {
    Cut, ///< the answer is not whole, and nothing of it is carried out
    Withheld, ///< the server's filter held it back
    Forgotten, ///< the model could not read the whole conversation
    CallAsText, ///< the model has written a call in place of making it
    Shortened, ///< the answer is longer than is taken
};

QString noticeText(Notice notice, Language language);

/// Says that the model wanted the deed, told in a whole sentence, without being asked; and how to ask for the intent.
QString unaskedText(const QString &deed, const Intent &intent, Language language);

} // namespace tavro::assistantservice
