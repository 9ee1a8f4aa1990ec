#include "zvtranslate/zvtranslate.h"

#include "languagefile.h"

#include <QFile>
#include <QLoggingCategory>

#include <mutex>
#include <shared_mutex>
#include <string_view>

namespace tavro::trans {

namespace {

// "zvtranslate": language files that are refused.
Q_LOGGING_CATEGORY(logTranslate, "zvtranslate")

void merge(Contexts &into, Contexts &&from)
{
    for (auto &[context, texts] : from) {
        texts.merge(std::move(into[context]));
        into[context] = std::move(texts);
    }
}

template <typename Map>
const typename Map::mapped_type *find(const Map &map, const char *key)
{
    const auto found = map.find(std::string_view(key ? key : ""));
    return found == map.end() ? nullptr : &found->second;
}

} // namespace

class Q_DECL_HIDDEN Translator::Private {
public:
    // Must be held; null when the current language has no text.
    const Contexts *currentTexts() const
    {
        const auto found = languages.find(current);
        return found == languages.end() ? nullptr : &found->second;
    }

    mutable std::shared_mutex mutex;
    std::map<QString, Contexts> languages;
    QString current;
};

Translator::Translator()
    : d(std::make_unique<Private>())
{ }

Translator::~Translator() = default;

bool Translator::load(const QString &path)
{
    QFile device(path);
    if (!device.open(QIODevice::ReadOnly)) {
        qCWarning(logTranslate).noquote() << "language file" << path << "cannot be read:" << device.errorString();
        return false;
    }
    LanguageFileError error;
    std::optional<LanguageFile> file = readLanguageFile(device, error);
    if (!file) {
        qCWarning(logTranslate).noquote().nospace()
            << "language file " << path << ", line " << error.line << ": " << error.reason;
        return false;
    }
    if (file->contexts.empty())
        return true;
    const std::unique_lock lock(d->mutex);
    merge(d->languages[file->language], std::move(file->contexts));
    return true;
}

bool Translator::switchLanguage(const QString &language)
{
    const std::unique_lock lock(d->mutex);
    d->current = language;
    return d->currentTexts() != nullptr;
}

QString Translator::currentLanguage() const
{
    const std::shared_lock lock(d->mutex);
    return d->current;
}

QStringList Translator::languages() const
{
    const std::shared_lock lock(d->mutex);
    QStringList names;
    for (const auto &language : d->languages)
        names << language.first;
    return names;
}

bool Translator::hasTexts() const
{
    const std::shared_lock lock(d->mutex);
    return d->currentTexts() != nullptr;
}

QString Translator::text(const char *context, const char *key) const
{
    const std::shared_lock lock(d->mutex);
    const Contexts *contexts = d->currentTexts();
    const Texts *texts = contexts ? find(*contexts, context) : nullptr;
    const QString *text = texts ? find(*texts, key) : nullptr;
    return text ? *text : QString();
}

QString translate(const Translator &translator, const char *context, const char *key, const QString &defaultText)
{
    const QString text = translator.text(context, key);
    return text.isNull() ? defaultText : text;
}

} // namespace tavro::trans
