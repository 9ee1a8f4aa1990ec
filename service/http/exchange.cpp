#include "http/exchange.h"

#include "servicelog.h"

namespace tavro::assistantservice {

namespace {

thread_local Exchange exchange;

// The id of a picture lets anyone fetch it, and other paths may hold anything: neither goes into the log.
const char *endpointName(const std::string &path)
{
    static const char *const names[] = {"/ai/texttotext/generate/", "/ai/texttoimage/generate/", "/ai/result/filter/",
                                        "/healthz", "/pictures/"};
    for (const char *name : names) {
        if (path.rfind(name, 0) == 0) {
            return name;
        }
    }
    return "other";
}

size_t bodySize(const httplib::Response &response)
{
    return response.body.empty() ? response.content_length_ : response.body.size();
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

Exchange &startExchange(ClientStream &stream)
{
    exchange = Exchange();
    exchange.stream = &stream;
    exchange.start = std::chrono::steady_clock::now();
    return exchange;
}

Exchange &currentExchange()
{
    return exchange;
}

void setReply(httplib::Response &response, const Reply &reply)
{
    exchange.code = reply.code;
    exchange.requestId = reply.requestId;
    response.status = reply.status;
    if (reply.contentType == "application/json") {
        response.set_content(reply.body.toStdString(), reply.contentType.toStdString());
        return;
    }
    // A picture is tens of megabytes: it is sent from where it lies.
    const QByteArray bytes = reply.body;
    response.set_content_provider(static_cast<size_t>(bytes.size()), reply.contentType.toStdString(),
                                  [bytes](size_t offset, size_t length, httplib::DataSink &sink) {
                                      return sink.write(bytes.constData() + offset, length);
                                  });
}

void logExchange(const httplib::Request &request, const httplib::Response &response)
{
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - exchange.start;
    serviceLog().info("event=request id={} endpoint={} status={} code={} ms={:.1f} received={} sent={}",
                      plainId(exchange.requestId), endpointName(request.path), response.status, exchange.code,
                      time.count(), exchange.received, bodySize(response));
}

} // namespace tavro::assistantservice
