#pragma once

#include "common/export.h"

#include <QStringList>

#include <memory>

namespace tavro::trans {
class Translator;
}

namespace tavro::aiassistant {

/// The one translator of the module, shared by all its widgets. May be used from any thread.
class ZVAIASSISTANT_EXPORT TranslateManager {
public:
    /// The one manager. It is made on the first call and lives until the process ends.
    static TranslateManager &instance();

    TranslateManager(const TranslateManager &) = delete;
    TranslateManager &operator=(const TranslateManager &) = delete;

    /// Loads language files (Qt Linguist TS) in list order; of two texts for a key the later wins. A file that cannot
    /// be loaded is logged and does not stop those after it.
    void loadLanguageFiles(const QStringList &paths) const;

    /// Makes @p language the current one: "en", "korean", "rus", "zh_TW", "zh_CN" or what other loaded files name. A
    /// language without files is remembered; lookups then give their default.
    void switchLanguage(const QString &language);

    /// The translator, for lookups with tavro::trans::translate() and the context "aiassistant".
    tavro::trans::Translator &translator();

private:
    TranslateManager();
    ~TranslateManager();

    std::unique_ptr<tavro::trans::Translator> m_translator;
};

} // namespace tavro::aiassistant
