#pragma once

#include "engine.h"
#include "openai/chatreply.h"
#include "openai/modelchoice.h"
#include "openai/upstreamsettings.h"

namespace tavro::assistantservice {

/// Has questions answered by a text model, and turns its tool calls into commands. May be used by several threads.
class UpstreamChat {
public:
    explicit UpstreamChat(ChatSettings settings);

    TextResult answer(const TextRequest &request, const std::atomic<bool> &cancelled) const;

    const UpstreamClient &client() const { return m_client; }

private:
    ServiceError chooseModel(const TextRequest &request, const Patience &patience, QString &model) const;
    UpstreamReply ask(const QJsonObject &body, const Patience &patience) const;
    ServiceError failure(const UpstreamReply &reply, const QString &model) const;

    const ChatSettings m_settings;
    const UpstreamClient m_client;
    mutable ModelChoice m_onlyModel;
};

} // namespace tavro::assistantservice
