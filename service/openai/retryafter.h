#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

namespace tavro::assistantservice {

/// How long a Retry-After header asks to be left alone: seconds, or until a date. Nothing where it holds neither, or a
/// time that is over. Absurd waits come out as a year.
std::optional<std::chrono::seconds> wishedWait(const QByteArray &header);

/// The wait for the operator: "30 seconds", "3 minutes", "more than a day".
QString waitText(std::chrono::seconds wait);

} // namespace tavro::assistantservice
