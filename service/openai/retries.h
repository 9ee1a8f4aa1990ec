#pragma once

#include "openai/upstreamclient.h"

#include <functional>
#include <optional>

namespace tavro::assistantservice {

/// How long to wait before a question is asked again; nothing where it is no use. `attempt` counts the calls made so
/// far, from 1. `unit` is the time that waits are made of, a second in earnest.
std::optional<std::chrono::milliseconds> delayBeforeRetry(const UpstreamReply &reply, int attempt,
                                                          std::chrono::milliseconds unit);

/// Makes the call, and makes it again as long as that is of use and the patience lasts. The last reply is returned.
UpstreamReply withRetries(const std::function<UpstreamReply()> &call, std::chrono::milliseconds unit,
                          const Patience &patience);

} // namespace tavro::assistantservice
