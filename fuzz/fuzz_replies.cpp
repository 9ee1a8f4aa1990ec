// The bodies of the service's replies, down to the agent commands in them.

#include "aicontroller/agentcmd_p.h"
#include "aicontroller/servicemessages.h"

#include <cstddef>
#include <cstdint>
#include <limits>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace tavro::aiassistant;
    if (size > std::size_t{std::numeric_limits<int>::max()})
        return 0;
    const QByteArray body = QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    readGenerationReply(body);
    readAgentCommands(readResultReply(body).agentCmds);
    return 0;
}
