#include "grammar/wordruns.h"

#include "grammar/vocabulary.h"

#include <algorithm>
#include <iterator>

namespace tavro::assistantservice {

int longestAt(WordLists lists, const Tokens &tokens, int index)
{
    int longest = 0;
    for (const WordList *list : lists) {
        longest = std::max(longest, list->lengthAt(tokens, index));
    }
    return longest;
}

bool consistsOf(WordLists lists, const Tokens &tokens)
{
    return unexplained(lists, tokens).isEmpty();
}

Tokens unexplained(WordLists lists, const Tokens &tokens)
{
    Tokens left;
    for (int i = 0; i < tokens.size();) {
        const bool name = tokens[i].quoted;
        const int length = tokens[i].kind == Token::Kind::Pause ? 1 : longestAt(lists, tokens, i);
        if (name || length == 0) {
            left.append(tokens[i]);
        }
        i += name ? 1 : std::max(1, length);
    }
    return left;
}

Tokens trimmed(Tokens tokens)
{
    const WordList &filler = Vocabulary::instance().filler;
    int length = 1;
    while (!tokens.isEmpty() && length > 0) {
        length = tokens.first().quoted ? 0 : filler.lengthAt(tokens, 0);
        tokens = tokens.mid(length);
    }
    for (bool dropped = true; dropped;) {
        dropped = false;
        for (int from = std::max(0, tokens.size() - 4); from < tokens.size() && !dropped; ++from) {
            if (!tokens[from].quoted && filler.lengthAt(tokens, from) == tokens.size() - from) {
                tokens = tokens.mid(0, from);
                dropped = true;
            }
        }
    }
    return tokens;
}

Tokens withoutFillers(const Tokens &tokens)
{
    Tokens kept;
    for (int i = 0; i < tokens.size();) {
        const int length = tokens[i].quoted ? 0 : Vocabulary::instance().filler.lengthAt(tokens, i);
        if (length == 0) {
            kept.append(tokens[i]);
        }
        i += std::max(1, length);
    }
    return kept;
}

Tokens withoutPauses(const Tokens &tokens)
{
    Tokens kept;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(kept),
                 [](const Token &token) { return token.kind != Token::Kind::Pause; });
    return kept;
}

Tokens quotedOnly(const Tokens &tokens)
{
    Tokens kept;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(kept),
                 [](const Token &token) { return token.quoted; });
    return kept;
}

} // namespace tavro::assistantservice
