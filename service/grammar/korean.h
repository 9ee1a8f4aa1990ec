#pragma once

#include "grammar/tokens.h"

namespace tavro::assistantservice {

bool isHangul(const Token &token);

/// Korean writes small words like "를" and "에서" onto the end of a noun: the noun without the last of them. A text
/// that has none comes back as it is.
QString withoutParticle(const QString &text);

/// "오십" is 50. From ten on: the single digits are everyday words, too. -1 for any other text.
int sinoKoreanNumber(const QString &text);

} // namespace tavro::assistantservice
