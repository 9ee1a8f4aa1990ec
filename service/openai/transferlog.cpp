#include "openai/transferlog.h"

#include "servicelog.h"

namespace tavro::assistantservice {

UpstreamReply loggedTransfer(const TransferRequest &request, const QString &endpoint, const Patience &patience)
{
    const auto begin = std::chrono::steady_clock::now();
    UpstreamReply reply = transfer(request, patience);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    // The query of a picture's address may let whoever knows it fetch the picture.
    const QString path = endpoint.section(QLatin1Char('?'), 0, 0);
    serviceLog().info("event=upstream endpoint={} outcome={} status={} ms={:.1f} sent={} received={}",
                      path.toStdString(), outcomeName(reply.outcome), reply.status, took.count(), request.body.size(),
                      reply.body.size());
    return reply;
}

} // namespace tavro::assistantservice
