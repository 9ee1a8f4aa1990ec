#include "machine/loggingcategories.h"

namespace tavro::runtime {

Q_LOGGING_CATEGORY(lcRuntime, "zvruntime")

} // namespace tavro::runtime
