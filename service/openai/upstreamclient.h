#pragma once

#include "openai/patience.h"
#include "openai/upstreamaddress.h"

#include <httplib.h>

#include <QByteArray>
#include <QJsonObject>

namespace tavro::assistantservice {

/// What came of one exchange with an upstream server.
struct UpstreamReply {
    enum class Outcome {
        Answered, ///< with any status
        NotConnected,
        NotTrusted, ///< its TLS certificate is not valid for it
        Broken, ///< it hung up before the end of its answer, or what came was no HTTP
        TooLarge,
        OutOfTime,
        Cancelled,
    };

    Outcome outcome = Outcome::Broken;
    int status = 0;
    QByteArray body;
    /// The header of that name, empty where there was none.
    QByteArray retryAfter;

    bool isGood() const { return outcome == Outcome::Answered && status >= 200 && status < 300; }
};

/// Sends requests to one server, each over a connection of its own and never a second time. The functions block, may be
/// called from several threads at once, and follow no redirects: the key is meant for this server alone.
class UpstreamClient {
public:
    /// `key` is sent as a bearer token; empty: none is.
    UpstreamClient(UpstreamAddress address, QByteArray key);

    UpstreamReply get(const QString &target, qint64 largestBody, const Patience &patience) const;
    UpstreamReply post(const QString &target, const QJsonObject &body, qint64 largestBody,
                       const Patience &patience) const;

    const UpstreamAddress &address() const { return m_address; }

private:
    struct Call;
    UpstreamReply exchange(const Call &call, const Patience &patience) const;
    UpstreamReply send(const Call &call, const Patience &patience) const;
    httplib::Request makeRequest(const Call &call) const;

    const UpstreamAddress m_address;
    const QByteArray m_key;
};

} // namespace tavro::assistantservice
