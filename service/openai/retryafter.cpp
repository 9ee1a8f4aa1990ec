#include "openai/retryafter.h"

#include <curl/curl.h>

#include <QDateTime>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr seconds longest = hours(24 * 365);

bool isNumber(const QByteArray &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A number that no integer holds is a long wait all the same.
qint64 secondsIn(const QByteArray &text)
{
    if (isNumber(text)) {
        bool ok = false;
        const qint64 number = text.toLongLong(&ok);
        return ok ? number : longest.count();
    }
    const time_t date = curl_getdate(text.constData(), nullptr);
    return date < 0 ? 0 : qint64{date} - QDateTime::currentSecsSinceEpoch();
}

QString counted(qint64 count, const char *unit)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(unit), count == 1 ? QString() : QStringLiteral("s"));
}

qint64 roundedUp(seconds wait, seconds unit)
{
    return (wait + unit - seconds(1)) / unit;
}

} // namespace

std::optional<seconds> wishedWait(const QByteArray &header)
{
    const qint64 wait = secondsIn(header.trimmed());
    return wait > 0 ? std::optional(std::min(seconds(wait), longest)) : std::nullopt;
}

QString waitText(seconds wait)
{
    if (wait > hours(24)) {
        return QStringLiteral("more than a day");
    }
    if (wait > minutes(120)) {
        return counted(roundedUp(wait, hours(1)), "hour");
    }
    return wait > seconds(120) ? counted(roundedUp(wait, minutes(1)), "minute") : counted(wait.count(), "second");
}

} // namespace tavro::assistantservice
