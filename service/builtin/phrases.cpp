#include "builtin/phrases.h"

namespace tavro::assistantservice {

const Phrases &phrasesFor(Language language)
{
    switch (language) {
    case Language::ChineseSimplified:
        return simplifiedChinesePhrases;
    case Language::ChineseTraditional:
        return traditionalChinesePhrases;
    case Language::Korean:
        return koreanPhrases;
    case Language::Russian:
        return russianPhrases;
    case Language::English:
        break;
    }
    return englishPhrases;
}

} // namespace tavro::assistantservice
