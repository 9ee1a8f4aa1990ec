#include "http/exchange.h"

#include "servicelog.h"

namespace tavro::assistantservice {

namespace {

// The id of a picture lets anyone fetch it, and other paths may hold anything: neither goes into the log.
const char *endpointName(const QByteArray &path)
{
    static const char *const names[] = {"/ai/texttotext/generate/", "/ai/texttoimage/generate/", "/ai/result/filter/",
                                        "/healthz", "/pictures/"};
    for (const char *name : names) {
        if (path.startsWith(name)) {
            return name;
        }
    }
    return "other";
}

// A poll's id comes from outside.
std::string plainId(const QString &id)
{
    std::string plain;
    for (const QChar c : id) {
        const bool safe = c.unicode() < 128 && c.isLetterOrNumber();
        plain += safe ? c.toLatin1() : '?';
    }
    return plain.empty() ? "-" : plain;
}

} // namespace

void logExchange(const Exchange &exchange)
{
    const Reply reply = exchange.reply.value_or(Reply());
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - exchange.start;
    serviceLog().info("event=request id={} endpoint={} status={} code={} ms={:.1f} received={} sent={}",
                      plainId(reply.requestId), endpointName(exchange.head.path), reply.status, reply.code,
                      time.count(), exchange.body ? exchange.body->received() : 0, exchange.sent);
}

} // namespace tavro::assistantservice
