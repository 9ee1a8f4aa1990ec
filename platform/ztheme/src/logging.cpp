#include "logging.h"

namespace ZT {

Q_LOGGING_CATEGORY(logTheme, "ztheme")

} // namespace ZT
