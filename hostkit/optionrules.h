#pragma once

#include <QString>

namespace tavro::hostkit {

// What the values of options must be like. Each gives why a value cannot be used, as the end of a sentence that begins
// with the option's name ("has a line break in it"); empty where it can.

QString problemOfService(const QString &address); ///< the AI service's
QString problemOfHeaderValue(const QString &value);
QString problemOfSeconds(const QString &number);
QString problemOfFolder(const QString &path);
QString problemOfFile(const QString &path);
QString problemOfTheme(const QString &path);

/// The paths that are put behind a service's address begin with a slash.
QString withoutEndSlash(QString address);

constexpr int mostSeconds = 2'000'000; ///< the controller counts milliseconds in 32 bits

} // namespace tavro::hostkit
