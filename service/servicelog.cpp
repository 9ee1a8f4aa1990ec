#include "servicelog.h"

#include <spdlog/sinks/stdout_sinks.h>

namespace tavro::assistantservice {

namespace {

std::shared_ptr<spdlog::logger> makeLogger()
{
    auto logger =
        std::make_shared<spdlog::logger>("assistantservice", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    logger->set_pattern("time=%Y-%m-%dT%H:%M:%S.%e%z level=%l %v");
    logger->flush_on(spdlog::level::trace);
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
