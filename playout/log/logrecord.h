#pragma once

#include <QDateTime>
#include <QString>

namespace tavro::playout {

enum class LogLevel { Debug, Info, Warning, Error };

/// "debug", "info", "warning", "error".
QString nameOf(LogLevel level);

/// One line of the log.
struct LogRecord {
    QDateTime time;
    LogLevel level = LogLevel::Info;
    QString text; ///< without line breaks
    QString place; ///< the category or the place in the source that it comes from; empty: the host itself
};

/// The record as it is copied and saved, with date, level and place.
QString fullLine(const LogRecord &record);

} // namespace tavro::playout
