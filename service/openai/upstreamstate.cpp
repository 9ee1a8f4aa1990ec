#include "openai/upstreamstate.h"

namespace tavro::assistantservice {

void UpstreamState::note(const UpstreamReply &reply)
{
    if (reply.outcome == UpstreamReply::Outcome::Cancelled) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    m_last = Last{reply.outcome, reply.status, std::chrono::steady_clock::now()};
}

QJsonObject UpstreamState::toJson() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_last) {
        return {};
    }
    const auto age = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - m_last->at);
    return {{QStringLiteral("outcome"), QLatin1String(outcomeName(m_last->outcome))},
            {QStringLiteral("status"), m_last->status},
            {QStringLiteral("ageSeconds"), static_cast<qint64>(age.count())}};
}

} // namespace tavro::assistantservice
