#include "openai/retries.h"

#include "openai/retryafter.h"
#include "openai/upstreamerror.h"

#include <QRandomGenerator>

namespace tavro::assistantservice {

namespace {

using std::chrono::milliseconds;

constexpr int mostFailedCalls = 3;

milliseconds waitBefore(const UpstreamReply &reply, int attempt, milliseconds unit)
{
    const std::optional<std::chrono::seconds> wished = wishedWait(reply.retryAfter);
    return wished ? wished->count() * unit : attempt * unit;
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
        return isQuotaSpent(reply) || attempt >= mostFailedCalls ? std::nullopt
                                                                 : std::optional(waitBefore(reply, attempt, unit));
    case 503:
    case 529:
        // A local model is being loaded, which may take as long as the patience lasts.
        return waitBefore(reply, 1, unit);
    case 408:
    case 500:
    case 502:
    case 504:
        return attempt >= mostFailedCalls || isContextTooLong(reply) || lacksToolSetup(reply)
            ? std::nullopt
            : std::optional(scattered(unit));
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
