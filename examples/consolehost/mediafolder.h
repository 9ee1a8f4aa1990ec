#pragma once

#include <QString>

#include <string>
#include <utility>
#include <vector>

namespace tavro::consolehost {

/// A media library as the controller takes it: pairs of id and name, UTF-8.
using MediaLibrary = std::vector<std::pair<std::string, std::string>>;

/// The files in @p folder and the folders below it, sorted by id. The id is the path relative to @p folder, which is
/// unique and stays the same from run to run; the name is the file's name. Hidden files are left out.
MediaLibrary readMediaFolder(const QString &folder);

} // namespace tavro::consolehost
