#pragma once

#include <QString>

namespace tavro::assistantservice {

/// The codes that a reply carries in "code" beside 0 (ready) and 1 (still working). They follow the HTTP status of the
/// same meaning, so that nobody has to learn two tables.
enum class ErrorCode {
    None = 0,
    BadRequest = 400,
    WrongToken = 401,
    Forbidden = 403,
    NotFound = 404,
    WrongMethod = 405,
    WrongKind = 409,
    Expired = 410,
    TooLarge = 413,
    WrongMediaType = 415,
    WrongRange = 416,
    WrongHost = 421,
    Busy = 429,
    EngineFailed = 500,
    UpstreamFailed = 502,
    Stopping = 503,
    UpstreamTimeout = 504,
};

/// What went wrong, as the client is told it. A default error means that nothing did.
struct ServiceError {
    ErrorCode code = ErrorCode::None;
    QString message;

    explicit operator bool() const { return code != ErrorCode::None; }
};

} // namespace tavro::assistantservice
