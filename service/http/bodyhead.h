#pragma once

#include "serviceerror.h"

namespace tavro::assistantservice {

struct HttpHead;

/// Bytes beyond the limit of a body that are read and thrown away, so that the client sees the reply.
constexpr qint64 thrownAwayAtMost = 64 * 1024 * 1024;

ServiceError bodyTooLarge(qint64 limit);

/// Checks what a request's head says about its body, before any of that is read: exactly one way to tell its length,
/// and a length within the limit. Two ways could be read differently by a proxy in between; with none the body would
/// end with the connection.
ServiceError checkBodyHead(const HttpHead &head, qint64 limit);

} // namespace tavro::assistantservice
