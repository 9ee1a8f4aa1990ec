#include "builtin/picturewish.h"

#include "builtin/agentcommands.h"
#include "builtin/wording.h"

namespace tavro::assistantservice {

void addPlayback(PictureResult &result, const QString &prompt)
{
    const Understanding wish = understandPictureWish(prompt);
    if (!wish.isPlayback() || isTooMuch(wish.intents)) {
        return;
    }
    const QVector<MediaItem> noMedia;
    const MediaNames noNames(noMedia);
    result.description += QLatin1Char(' ') + describe(wish, noNames, 0, detectLanguage(prompt));
    if (wish.problem == Problem::None) {
        result.agentCommands = agentCommands(wish.intents, noNames);
    }
}

} // namespace tavro::assistantservice
