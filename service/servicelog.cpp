#include "servicelog.h"

#include "linesink.h"

#include <unistd.h>

namespace tavro::assistantservice {

namespace {

std::shared_ptr<spdlog::logger> makeLogger()
{
    auto logger = std::make_shared<spdlog::logger>("assistantservice", std::make_shared<LineSink>(STDERR_FILENO));
    logger->set_pattern("time=%Y-%m-%dT%H:%M:%S.%e%z level=%l %v");
    return logger;
}

} // namespace

QStringList logLevels()
{
    return {QStringLiteral("debug"), QStringLiteral("info"), QStringLiteral("warning"), QStringLiteral("error"),
            QStringLiteral("off")};
}

spdlog::logger &serviceLog()
{
    static const std::shared_ptr<spdlog::logger> logger = makeLogger();
    return *logger;
}

bool setLogLevel(const QString &level)
{
    if (!logLevels().contains(level)) {
        return false;
    }
    serviceLog().set_level(spdlog::level::from_str(level.toStdString()));
    return true;
}

} // namespace tavro::assistantservice
