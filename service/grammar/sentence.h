#pragma once

#include "grammar/tokens.h"

namespace tavro::assistantservice {

/// Takes a sentence apart where a new request begins: "stop layer 1 and play X on layer 2".
QVector<Tokens> splitClauses(const Tokens &tokens);

/// Every end of the sentence that follows a pause or an "and", the longest first.
QVector<Tokens> tailsOf(const Tokens &tokens);

/// A question to be answered, not a request to be carried out: "how do I play ...".
bool isQuestion(const Tokens &tokens);

/// True for scripts without blanks, or with the verb at the end: a word of two signs may stand anywhere.
bool mayStandAnywhere(const Token &first, int length);

/// The words as they were written, with a blank where one stood or words are left out between them.
QString writtenText(const QString &sentence, const Tokens &tokens);

} // namespace tavro::assistantservice
