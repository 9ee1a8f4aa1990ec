#pragma once

#include <QString>

#include <map>
#include <optional>
#include <string>

class QIODevice;

namespace tavro::trans {

/// Texts by key, by context. The transparent comparison looks a C string up without making a copy of it.
using Texts = std::map<std::string, QString, std::less<>>;
using Contexts = std::map<std::string, Texts, std::less<>>;

struct LanguageFile {
    QString language;
    Contexts contexts;
};

/// The reason why a file was refused.
struct LanguageFileError {
    qint64 line = 0;
    QString reason;
};

/// Reads a whole TS document; empty, with @p error set, when any part of it is malformed.
std::optional<LanguageFile> readLanguageFile(QIODevice &device, LanguageFileError &error);

} // namespace tavro::trans
