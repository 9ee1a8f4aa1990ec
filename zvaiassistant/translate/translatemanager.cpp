#include "translate/translatemanager.h"

#include "zvtranslate/zvtranslate.h"

namespace tavro::aiassistant {

TranslateManager::TranslateManager()
    : m_translator(std::make_unique<tavro::trans::Translator>())
{ }

TranslateManager::~TranslateManager() = default;

TranslateManager &TranslateManager::instance()
{
    static TranslateManager manager;
    return manager;
}

void TranslateManager::loadLanguageFiles(const QStringList &paths) const
{
    for (const QString &path : paths)
        m_translator->load(path);
}

void TranslateManager::switchLanguage(const QString &language)
{
    m_translator->switchLanguage(language);
}

tavro::trans::Translator &TranslateManager::translator()
{
    return *m_translator;
}

} // namespace tavro::aiassistant
