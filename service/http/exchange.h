#pragma once

#include "http/bodybudget.h"
#include "http/httphead.h"
#include "replies.h"

#include <chrono>
#include <optional>

namespace tavro::assistantservice {

/// One request, from its head until its reply is out.
struct Exchange {
    HttpHead head;
    /// Set where the body counts.
    std::optional<RequestBody> body;
    /// Set once the service knows what to answer.
    std::optional<Reply> reply;
    /// Bytes of the reply's body.
    qint64 sent = 0;
    /// The rest of the request is not read.
    bool closeAfterwards = false;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

/// Writes the one log line of an exchange.
void logExchange(const Exchange &exchange);

} // namespace tavro::assistantservice
