#pragma once

#include "openai/addressclass.h"

#include <QByteArray>

namespace tavro::assistantservice {

/// What came of one exchange with a server.
struct UpstreamReply {
    enum class Outcome {
        Answered, ///< with any status
        NameUnknown,
        NotConnected,
        NotAllowed, ///< its address lies where the service must not be sent
        NotTrusted, ///< nobody that this machine trusts vouches for its TLS certificate
        WrongName, ///< the certificate is for another name or address
        OutOfDate, ///< the certificate is valid at another time only
        TlsTooOld,
        NoTls, ///< asked by TLS, it answers without
        WantsTls, ///< asked without TLS, it answers by TLS
        TlsFailed,
        NoHttp,
        Silent, ///< it hung up before the beginning of an answer
        Broken, ///< it hung up before the end of its answer
        HeadTooLarge, ///< its headers, or what it wraps its body's pieces in
        TooLarge,
        TooManyRedirects,
        OutOfTime,
        Cancelled,
    };

    Outcome outcome = Outcome::Broken;
    int status = 0;
    QByteArray body;
    /// The headers of those names, empty where there were none.
    QByteArray retryAfter;
    QByteArray contentType;
    /// Where the server is that answered.
    AddressClass peer = AddressClass::Forbidden;

    bool isAnswered() const { return outcome == Outcome::Answered; }
    bool isGood() const { return isAnswered() && status >= 200 && status < 300; }
};

/// The outcome's name for the log: "not-connected".
const char *outcomeName(UpstreamReply::Outcome outcome);

} // namespace tavro::assistantservice
