#include "multimachineproxy/callreceiver.h"

#include "common/hostlog.h"

namespace tavro::aiassistant {

void logRefusedCall(const char *name, const char *why)
{
    ZVAI_HOST_LOG(spdlog::level::err, "the message {} is not carried out: {}", name, why);
}

} // namespace tavro::aiassistant
