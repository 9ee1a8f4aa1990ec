#pragma once

#include <QLoggingCategory>

namespace ZT {

/// "ztheme": keys that a theme lacks, sheets and themes that cannot be read.
Q_DECLARE_LOGGING_CATEGORY(logTheme)

} // namespace ZT
