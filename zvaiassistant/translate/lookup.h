#pragma once

#include <QString>

namespace tavro::aiassistant {

/// The module's text for @p key in the current language; empty when there is none. Any thread.
QString text(const char *key);

/// What a control that shows no text of its own is called, for those who do not see its picture: @p english in the
/// current language, or as it is where that has no text for it. Any thread.
QString nameText(const char *english);

} // namespace tavro::aiassistant
