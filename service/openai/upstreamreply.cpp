#include "openai/upstreamreply.h"

namespace tavro::assistantservice {

const char *outcomeName(UpstreamReply::Outcome outcome)
{
    using Outcome = UpstreamReply::Outcome;
    switch (outcome) {
    case Outcome::Answered:
        return "answered";
    case Outcome::NameUnknown:
        return "name-unknown";
    case Outcome::NotConnected:
        return "not-connected";
    case Outcome::NotAllowed:
        return "not-allowed";
    case Outcome::NotTrusted:
        return "not-trusted";
    case Outcome::WrongName:
        return "wrong-name";
    case Outcome::OutOfDate:
        return "out-of-date";
    case Outcome::TlsTooOld:
        return "tls-too-old";
    case Outcome::NoTls:
        return "no-tls";
    case Outcome::WantsTls:
        return "wants-tls";
    case Outcome::TlsFailed:
        return "tls-failed";
    case Outcome::NoHttp:
        return "no-http";
    case Outcome::Silent:
        return "silent";
    case Outcome::HeadTooLarge:
        return "head-too-large";
    case Outcome::TooLarge:
        return "too-large";
    case Outcome::TooManyRedirects:
        return "too-many-redirects";
    case Outcome::OutOfTime:
        return "out-of-time";
    case Outcome::Cancelled:
        return "cancelled";
    case Outcome::Broken:
        break;
    }
    return "broken";
}

} // namespace tavro::assistantservice
