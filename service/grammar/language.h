#pragma once

#include <QString>

namespace tavro::assistantservice {

enum class Language { English, ChineseSimplified, ChineseTraditional, Korean, Russian };

/// The language a text is written in, by its script. Latin letters count last: a sentence in any language may hold a
/// name in Latin letters.
Language detectLanguage(const QString &text);

} // namespace tavro::assistantservice
