#pragma once

#include <QString>

namespace tavro::aiassistant {

/// @p text as the panel may show it: without the marks that turn the order of what stands around them (embeddings,
/// overrides and isolates), and with U+FFFD for control characters other than tabulator and line breaks. What scripts
/// themselves need stays: the marks that join, part or direct single characters.
QString harmlessText(const QString &text);

} // namespace tavro::aiassistant
