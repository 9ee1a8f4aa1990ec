#include "widgets/harmlesstext.h"

#include <algorithm>
#include <iterator>

namespace tavro::aiassistant {

namespace {

bool turnsOrder(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'\u202a' && code <= u'\u202e') || (code >= u'\u2066' && code <= u'\u2069');
}

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control && character != QLatin1Char('\t')
        && character != QLatin1Char('\n') && character != QLatin1Char('\r');
}

} // namespace

QString harmlessText(const QString &text)
{
    const auto isHarmful = [](QChar character) { return turnsOrder(character) || isControl(character); };
    if (std::none_of(text.cbegin(), text.cend(), isHarmful))
        return text;
    QString shown = text;
    auto *const end = std::remove_if(shown.begin(), shown.end(), &turnsOrder);
    shown.truncate(static_cast<int>(std::distance(shown.begin(), end)));
    std::replace_if(shown.begin(), shown.end(), &isControl, QChar(QChar::ReplacementCharacter));
    return shown;
}

} // namespace tavro::aiassistant
