#pragma once

#include <QLoggingCategory>

namespace tavro::runtime {

Q_DECLARE_LOGGING_CATEGORY(lcRuntime) ///< "zvruntime": connections between machines, messages that were lost

} // namespace tavro::runtime
