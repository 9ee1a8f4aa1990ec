#pragma once

#include "zvtranslate/zvtranslate_export.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace tavro::trans {

/// The texts of several languages, of which one is the current one.
///
/// All members and translate() may be called from any thread at the same time: a reader sees a file's texts all or not
/// at all.
class ZVTRANSLATE_EXPORT Translator {
public:
    /// No texts, and the empty name as the current language.
    Translator();
    ~Translator();

    Translator(const Translator &) = delete;
    Translator &operator=(const Translator &) = delete;

    /// Adds the texts of a Qt Linguist TS file (version 2) to its language. A file loaded later wins, key by key.
    /// Messages that are obsolete, vanished or without text are left out; an unfinished one counts where it has a text.
    /// Of plural forms and length variants the first is taken.
    ///
    /// False, with a warning that names file and line and with nothing added, when the file cannot be read, is
    /// malformed or names no language.
    bool load(const QString &path);

    /// Makes @p language (the "language" attribute of the files, case-sensitive) the current one. It is remembered also
    /// when no file has it yet: its texts are found once they are loaded. True when it has texts now.
    bool switchLanguage(const QString &language);

    /// The current language; empty before the first switchLanguage().
    QString currentLanguage() const;

    /// The languages that have texts, sorted.
    QStringList languages() const;

    /// True when the current language has a text.
    bool hasTexts() const;

    /// The text of @p key in @p context for the current language; null when there is none. Null pointers count as "".
    QString text(const char *context, const char *key) const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// The text of @p key in @p context for the current language of @p translator; @p defaultText when there is none.
ZVTRANSLATE_EXPORT QString translate(const Translator &translator, const char *context, const char *key,
                                     const QString &defaultText);

} // namespace tavro::trans
