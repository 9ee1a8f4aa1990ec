#pragma once

#include "requeststore.h"

namespace tavro::assistantservice {

/// One answer of the service, before it becomes HTTP.
struct Reply {
    int status = 200;
    QByteArray contentType = QByteArrayLiteral("application/json");
    QByteArray body;
    /// Set: the body is this picture, in place of `body`.
    std::shared_ptr<const StoredPicture> picture;
    /// For the log: the "code" of a JSON reply, and the request that it is about.
    int code = 0;
    QString requestId;
};

/// The error form at HTTP status 200: the panel reads the message only then.
Reply errorReply(const ServiceError &error);
/// The error form with the status that says the same, for what no panel asks.
Reply httpErrorReply(const ServiceError &error);
Reply acceptedReply(const QString &requestId);
Reply workingReply();
/// `pictureAddress` is the first answer of a picture request; a null one means a text.
Reply readyReply(const PollResult &result, const QString &pictureAddress);

} // namespace tavro::assistantservice
