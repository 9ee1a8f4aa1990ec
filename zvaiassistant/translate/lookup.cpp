#include "translate/lookup.h"

#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

namespace tavro::aiassistant {

QString text(const char *key)
{
    return tavro::trans::translate(TranslateManager::instance().translator(), "aiassistant", key, QString());
}

} // namespace tavro::aiassistant
