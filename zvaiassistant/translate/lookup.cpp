#include "translate/lookup.h"

#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

namespace tavro::aiassistant {

QString text(const char *key)
{
    return tavro::trans::translate(TranslateManager::instance().translator(), "aiassistant", key, QString());
}

QString nameText(const char *english)
{
    const QString translated = text(english);
    return translated.isEmpty() ? QString::fromLatin1(english) : translated;
}

} // namespace tavro::aiassistant
