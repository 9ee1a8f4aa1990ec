#pragma once

#include "http/httphead.h"
#include "replies.h"

struct MHD_Connection;

namespace tavro::assistantservice {

/// Hands `reply` to the HTTP library as the answer to the request with that head. Of a picture only the part that the
/// request asks for is sent; the reply's status is set to what is sent. Returns how many bytes the body has, or -1
/// where the library has no memory for it.
qint64 queueReply(MHD_Connection *connection, const HttpHead &head, Reply &reply, bool closeAfterwards);

} // namespace tavro::assistantservice
