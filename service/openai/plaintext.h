#pragma once

#include <QString>

namespace tavro::assistantservice {

/// A foreign text as it may be shown: without control characters but line breaks and tabs, and without the invisible
/// ones that turn the direction of text around or hide what is written. Broken characters become U+FFFD.
QString plainText(const QString &text);

/// The same in one line of at most so many characters, with an ellipsis where it was longer.
QString plainLine(const QString &text, int longest);

/// The beginning of a text, without half a character at its end.
QString clipped(const QString &text, int longest);

} // namespace tavro::assistantservice
