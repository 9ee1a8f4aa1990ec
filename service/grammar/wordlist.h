#pragma once

#include "grammar/tokens.h"

#include <QHash>
#include <QStringList>

namespace tavro::assistantservice {

/// A set of words and short phrases of all languages, such as everything that means "play". A word with a star at its
/// end stands for all words that begin so ("воспроизвед*").
class WordList {
public:
    /// Phrases with "|" between them.
    explicit WordList(const char16_t *phrases);

    /// How many tokens from `from` on make up the longest phrase of the list that stands there; 0 for none.
    int lengthAt(const Tokens &tokens, int from) const { return lengthAt(tokens, from, tokens.size()); }
    /// The same of the tokens before `end`.
    int lengthAt(const Tokens &tokens, int from, int end) const;
    bool contains(const Token &token) const;
    bool occursIn(const Tokens &tokens) const;

private:
    int length(const QStringList &phrase, const Tokens &tokens, int from, int end) const;

    QHash<QString, QVector<QStringList>> m_phrases;
    QVector<QStringList> m_openPhrases;
};

} // namespace tavro::assistantservice
