#pragma once

#include <QJsonObject>

namespace tavro::machineprocess {

/// Writes one line of JSON to standard output. May be called from any thread.
void report(const QJsonObject &event);

/// From now on, reports all lines of the host's log and Qt's warnings, as {"log": level, "text": ...}.
void reportLogs();

} // namespace tavro::machineprocess
