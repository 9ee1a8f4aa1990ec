#pragma once

#include <QChar>

namespace tavro::assistantservice {

/// True for a Chinese character that simplified texts do not use (of the common ones).
bool isTraditional(QChar c);
bool isHan(QChar c);

/// The form under which characters are compared: lower case, half width, simplified Chinese, Russian without the dots
/// on its yo.
QChar folded(QChar c);

} // namespace tavro::assistantservice
