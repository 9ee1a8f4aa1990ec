#pragma once

#include "bodylimits.h"
#include "engine.h"

namespace tavro::assistantservice {

/// The body of a poll.
struct PollRequest {
    bool picture = false;
    QString requestId;
};

// Each reads one request body. The error says which member is wrong and why; with an error the record does not count.
// Members that the interface does not name are ignored.
ServiceError readTextRequest(const QByteArray &body, const BodyLimits &limits, TextRequest &request);
ServiceError readPictureRequest(const QByteArray &body, const BodyLimits &limits, PictureRequest &request);
ServiceError readPollRequest(const QByteArray &body, PollRequest &request);

} // namespace tavro::assistantservice
