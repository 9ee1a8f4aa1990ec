#include "grammar/language.h"

#include "grammar/folding.h"

namespace tavro::assistantservice {

namespace {

struct LetterCounts {
    int han = 0;
    int hanTraditional = 0;
    int hangul = 0;
    int cyrillic = 0;
    int latin = 0;
};

LetterCounts countLetters(const QString &text)
{
    LetterCounts counts;
    for (const QChar c : text) {
        switch (c.script()) {
        case QChar::Script_Han:
            ++counts.han;
            counts.hanTraditional += isTraditional(c) ? 1 : 0;
            break;
        case QChar::Script_Hangul:
            ++counts.hangul;
            break;
        case QChar::Script_Cyrillic:
            ++counts.cyrillic;
            break;
        default:
            counts.latin += c.isLetter() ? 1 : 0;
            break;
        }
    }
    return counts;
}

} // namespace

// An ideograph or a syllable block says about as much as three letters.
Language detectLanguage(const QString &text)
{
    const LetterCounts counts = countLetters(text);
    const int han = 3 * counts.han;
    const int hangul = 3 * counts.hangul;
    if (hangul > 0 && hangul >= han && hangul >= counts.cyrillic) {
        return Language::Korean;
    }
    if (han > 0 && han >= counts.cyrillic) {
        return counts.hanTraditional > 0 ? Language::ChineseTraditional : Language::ChineseSimplified;
    }
    return counts.cyrillic > 0 ? Language::Russian : Language::English;
}

} // namespace tavro::assistantservice
