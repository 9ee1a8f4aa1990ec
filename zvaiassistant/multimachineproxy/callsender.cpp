#include "multimachineproxy/callsender.h"

#include "common/hostlog.h"

namespace tavro::aiassistant {

void CallSender::logNotSent(const char *name, const char *why)
{
    ZVAI_HOST_LOG(spdlog::level::err, "the message {} is not sent: {}", name, why);
}

} // namespace tavro::aiassistant
