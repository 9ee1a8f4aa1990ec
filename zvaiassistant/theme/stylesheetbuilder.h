#pragma once

#include "theme/theme.h"

#include <memory>
#include <string>

namespace tavro::aiassistant {

/// A new theme with the values of the INI file at @p path (Latin-1). A file that is missing or cannot be read gives an
/// empty theme; nothing is reported. Never null. Any thread.
std::unique_ptr<Theme> readTheme(const std::string &path);

/// The module's own sheets, joined, with the values of @p theme in place of the placeholders. In the theme's thread.
QString finishedStyleSheet(Theme &theme);

} // namespace tavro::aiassistant
