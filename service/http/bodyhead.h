#pragma once

#include "serviceerror.h"

#include <httplib.h>

namespace tavro::assistantservice {

ServiceError bodyTooLarge(qint64 limit);

/// Checks what a request's head says about its body, before any of that is read: exactly one way to tell its length,
/// and a length within the limit. Two ways could be read differently by a proxy in between; with none the body would
/// end with the connection.
ServiceError checkBodyHead(const httplib::Request &request, qint64 limit);

} // namespace tavro::assistantservice
