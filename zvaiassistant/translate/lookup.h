#pragma once

#include <QString>

namespace tavro::aiassistant {

/// The module's text for @p key in the current language; empty when there is none. Any thread.
QString text(const char *key);

} // namespace tavro::aiassistant
