// What a client may send the service as a body: the first byte says to which address, the rest is the body.

#include "requestbodies.h"
#include "support/checks.h"
#include "support/input.h"

using namespace tavro::assistantservice;

namespace {

void readText(const QByteArray &body)
{
    TextRequest request;
    if (!readTextRequest(body, {}, request))
        demand(!request.messages.isEmpty() && !request.messages.last().fromAssistant);
}

void readPicture(const QByteArray &body)
{
    const BodyLimits limits;
    PictureRequest request;
    if (!readPictureRequest(body, limits, request))
        demand(request.size == request.size.boundedTo(limits.largestPicture).expandedTo(limits.smallestPicture));
}

void readPoll(const QByteArray &body)
{
    PollRequest request;
    readPollRequest(body, request);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr void (*readers[])(const QByteArray &){readText, readPicture, readPoll};
    Input input(data, size);
    const std::uint8_t selector = input.byte();
    readers[selector % 3](input.rest());
    return 0;
}
