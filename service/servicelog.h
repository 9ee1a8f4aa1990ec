#pragma once

#include <spdlog/logger.h>

#include <QStringList>

namespace tavro::assistantservice {

/// The names that setLogLevel() takes.
QStringList logLevels();
/// One line per event on standard error, as "key=value" pairs. Where nobody reads them lines are dropped and counted.
spdlog::logger &serviceLog();
/// False where there is no such level.
bool setLogLevel(const QString &level);

} // namespace tavro::assistantservice
