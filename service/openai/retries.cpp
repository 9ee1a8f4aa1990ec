#include "openai/retries.h"

#include "openai/upstreamerror.h"

#include <QRandomGenerator>

namespace tavro::assistantservice {

namespace {

using std::chrono::milliseconds;

constexpr int mostFailedCalls = 3;

// A wait in seconds; some servers give the date instead, which counts as not given.
milliseconds wishedWait(const QByteArray &retryAfter, int attempt, milliseconds unit)
{
    bool ok = false;
    const int seconds = retryAfter.trimmed().toInt(&ok);
    return ok && seconds > 0 ? seconds * unit : attempt * unit;
}

// Clients that failed together should not all come back together.
milliseconds scattered(milliseconds unit)
{
    const double part = 0.25 + QRandomGenerator::global()->bounded(0.5);
    return std::chrono::duration_cast<milliseconds>(unit * part);
}

} // namespace

std::optional<milliseconds> delayBeforeRetry(const UpstreamReply &reply, int attempt, milliseconds unit)
{
    if (!reply.isAnswered()) {
        return {};
    }
    switch (reply.status) {
    case 429:
        return isQuotaSpent(reply) || attempt >= mostFailedCalls
            ? std::nullopt
            : std::optional(wishedWait(reply.retryAfter, attempt, unit));
    case 503:
        // A local model is being loaded, which may take as long as the patience lasts.
        return wishedWait(reply.retryAfter, 1, unit);
    case 500:
    case 502:
    case 504:
        return attempt >= mostFailedCalls || isContextTooLong(reply) ? std::nullopt : std::optional(scattered(unit));
    default:
        return {};
    }
}

UpstreamReply withRetries(const std::function<UpstreamReply()> &call, milliseconds unit, const Patience &patience)
{
    for (int attempt = 1;; ++attempt) {
        UpstreamReply reply = call();
        const std::optional<milliseconds> delay = delayBeforeRetry(reply, attempt, unit);
        if (!delay || !patience.wait(*delay)) {
            return reply;
        }
    }
}

} // namespace tavro::assistantservice
