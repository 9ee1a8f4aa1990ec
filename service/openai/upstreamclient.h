#pragma once

#include "openai/patience.h"
#include "openai/upstreamaddress.h"
#include "openai/upstreamstate.h"

#include <QJsonObject>

namespace tavro::assistantservice {

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
    /// True where whoever is on the way to the server can read the key.
    bool showsKey() const;
    /// How the server did at its last exchange; see UpstreamState.
    QJsonObject state() const { return m_state.toJson(); }

private:
    struct Call;
    UpstreamReply exchange(const Call &call, const Patience &patience) const;

    const UpstreamAddress m_address;
    const QByteArray m_key;
    mutable UpstreamState m_state;
};

} // namespace tavro::assistantservice
