#pragma once

#include "zlspdlog/zlspdlog_export.h"

#include <spdlog/logger.h>

#include <memory>

namespace ZL {

/// Something that has a logger.
class ZLSPDLOG_EXPORT SpdlogBase {
public:
    virtual ~SpdlogBase();

    SpdlogBase(const SpdlogBase &) = delete;
    SpdlogBase &operator=(const SpdlogBase &) = delete;

    /// The logger, never null. May be called from any thread; the logger itself may be used by several threads at once.
    std::shared_ptr<spdlog::logger> logger() const;

protected:
    explicit SpdlogBase(std::shared_ptr<spdlog::logger> logger); ///< for SpdlogApplication

private:
    std::shared_ptr<spdlog::logger> m_logger;
};

/// The application's one logger, shared by the host and its modules.
///
/// It writes to standard error and, where asked to, to a file. It is set up once, on first use, from the environment:
/// - ZLSPDLOG_LEVEL: "trace", "debug", "info" (the default), "warning", "error", "critical" or "off". Another word
/// counts as
///   the default and is reported in the log.
/// - ZLSPDLOG_FILE: path of a log file. It is rotated at 5 MiB, three older files are kept. A file that cannot be
/// opened is
///   reported in the log and left out.
class ZLSPDLOG_EXPORT SpdlogApplication : public SpdlogBase {
public:
    /// The one instance, made on the first call. May be called from any thread.
    static SpdlogApplication &instance();

private:
    SpdlogApplication();
};

} // namespace ZL
