#include "zlspdlog/zlspdlog.h"

#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <cstddef>
#include <cstdlib>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace ZL {

namespace {

constexpr std::size_t maxFileBytes = std::size_t{5} * 1024 * 1024;
constexpr std::size_t olderFilesKept = 3;

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : std::string();
}

void setLevel(spdlog::logger &logger, const std::string &name)
{
    const auto level = spdlog::level::from_str(name);
    const bool unknown = level == spdlog::level::off && name != "off";
    logger.set_level(name.empty() || unknown ? spdlog::level::info : level);
    if (unknown && !name.empty())
        logger.warn("ZLSPDLOG_LEVEL is not a log level: {}", name);
}

void addFile(spdlog::logger &logger, const std::string &path)
{
    if (path.empty())
        return;
    try {
        logger.sinks().push_back(
            std::make_shared<spdlog::sinks::rotating_file_sink_mt>(path, maxFileBytes, olderFilesKept));
    } catch (const std::exception &error) {
        logger.error("ZLSPDLOG_FILE cannot be used: {}", error.what());
    }
}

std::shared_ptr<spdlog::logger> makeLogger()
{
    auto logger = std::make_shared<spdlog::logger>("zlspdlog", std::make_shared<spdlog::sinks::stderr_color_sink_mt>());
    // An error is what someone looks for after a crash, so it must not wait in a buffer.
    logger->flush_on(spdlog::level::err);
    // The file first: a bad level is reported there too, and a bad file is reported at any level.
    addFile(*logger, environment("ZLSPDLOG_FILE"));
    setLevel(*logger, environment("ZLSPDLOG_LEVEL"));
    return logger;
}

} // namespace

SpdlogBase::SpdlogBase(std::shared_ptr<spdlog::logger> logger)
    : m_logger(std::move(logger))
{ }

SpdlogBase::~SpdlogBase() = default;

std::shared_ptr<spdlog::logger> SpdlogBase::logger() const
{
    return m_logger;
}

SpdlogApplication::SpdlogApplication()
    : SpdlogBase(makeLogger())
{ }

SpdlogApplication &SpdlogApplication::instance()
{
    static SpdlogApplication application;
    return application;
}

} // namespace ZL
