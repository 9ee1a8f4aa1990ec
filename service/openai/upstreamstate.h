#pragma once

#include "openai/upstreamreply.h"

#include <QJsonObject>

#include <chrono>
#include <mutex>
#include <optional>

namespace tavro::assistantservice {

/// Remembers how a server did at its last exchange, for whoever watches the service. May be used by several threads.
class UpstreamState {
public:
    void note(const UpstreamReply &reply);

    /// "outcome", "status" and "ageSeconds"; empty before the first exchange. One that was cancelled says nothing of
    /// the server and does not count.
    QJsonObject toJson() const;

private:
    struct Last {
        UpstreamReply::Outcome outcome;
        int status;
        std::chrono::steady_clock::time_point at;
    };

    mutable std::mutex m_mutex;
    std::optional<Last> m_last;
};

} // namespace tavro::assistantservice
