#include "log/logrecord.h"

namespace tavro::playout {

QString nameOf(LogLevel level)
{
    switch (level) {
    case LogLevel::Debug:
        return QStringLiteral("debug");
    case LogLevel::Info:
        return QStringLiteral("info");
    case LogLevel::Warning:
        return QStringLiteral("warning");
    case LogLevel::Error:
        break;
    }
    return QStringLiteral("error");
}

QString fullLine(const LogRecord &record)
{
    const QString time = record.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    const QString place = record.place.isEmpty() ? QString() : QStringLiteral("  [%1]").arg(record.place);
    return time + QLatin1Char(' ') + nameOf(record.level).leftJustified(7) + QLatin1Char(' ') + record.text + place;
}

} // namespace tavro::playout
