#pragma once

#include "assistant.h"
#include "callerrules.h"
#include "http/httphead.h"

#include <map>

namespace tavro::assistantservice {

/// Says which reply a request gets, free of the HTTP library. All functions may be called from any thread.
class Endpoints {
public:
    Endpoints(Assistant &assistant, CallerRules rules, qint64 largestBody);

    /// The reply to a request whose body is not wanted; none where it is, and answer() then has the reply.
    std::optional<Reply> answerHead(const HttpHead &head);
    Reply answer(const HttpHead &head, const QByteArray &body);

private:
    using JsonEndpoint = Reply (Assistant::*)(const Caller &, const QByteArray &);

    ServiceError refusal(const HttpHead &head) const;
    Reply answerGet(const HttpHead &head);

    Assistant &m_assistant;
    const CallerRules m_rules;
    const qint64 m_largestBody;
    const std::map<QByteArray, JsonEndpoint> m_posts;
};

} // namespace tavro::assistantservice
