// What a model's server may answer, down to the commands in it: the first byte chooses the status, the rest is the
// body.

#include "grammar/medianames.h"
#include "openai/chatreply.h"
#include "openai/mediaselection.h"
#include "openai/picturereply.h"
#include "openai/retries.h"
#include "openai/toolcalls.h"
#include "openai/upstreamerror.h"
#include "support/checks.h"
#include "support/input.h"

using namespace tavro::assistantservice;

namespace {

const QVector<MediaItem> media{{QStringLiteral("m1"), QStringLiteral("Harbour")},
                               {QStringLiteral("m2"), QStringLiteral("Sunset Beach")}};

void readChat(const QByteArray &body)
{
    const std::optional<ChatReply> reply = readChatReply(body);
    if (!reply)
        return;
    const Understanding understanding =
        understandCalls(reply->calls, MediaNames(media), media, mediaForModel(media, {}));
    for (const Intent &intent : understanding.intents)
        demand(intent.media < media.size());
}

void readFailure(std::uint8_t selector, const QByteArray &body)
{
    constexpr int statuses[]{200, 302, 400, 401, 404, 429, 500, 503};
    UpstreamReply reply;
    reply.outcome = UpstreamReply::Outcome::Answered;
    reply.status = statuses[selector % 8];
    reply.body = body;
    reply.retryAfter = body.left(40);
    upstreamError(reply, {}, QStringLiteral("model"));
    unusableAnswer(reply, {}, "choices");
    isContextTooLong(reply);
    delayBeforeRetry(reply, 1, std::chrono::seconds(1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const std::uint8_t selector = input.byte();
    const QByteArray body = input.rest();
    readChat(body);
    readPictureReply(body);
    readFailure(selector, body);
    return 0;
}
