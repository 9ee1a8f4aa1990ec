#pragma once

#include "builtin/builtinengine.h"
#include "openai/upstreamchat.h"
#include "openai/upstreamcheck.h"
#include "openai/upstreampictures.h"

#include <list>
#include <optional>

namespace tavro::assistantservice {

/// Has the work done by servers with the OpenAI-compatible interface.
class OpenAiEngine : public Engine {
public:
    /// Without a server for pictures they are drawn by rules.
    OpenAiEngine(const ChatSettings &chat, const std::optional<PictureSettings> &pictures);

    TextResult answer(const TextRequest &request, const std::atomic<bool> &cancelled) const override;
    PictureResult draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const override;
    /// "upstream" and, where there is another one for pictures, "pictureUpstream": what the last exchange came to.
    QJsonObject state() const override;

    /// Has the log tell whether the servers are there, and who can read the keys. Does not wait for it.
    void begin();

private:
    QVector<const UpstreamClient *> clients() const;

    const bool m_tools;
    const BuiltinEngine m_rules;
    const UpstreamChat m_chat;
    std::optional<UpstreamPictures> m_pictures;
    // After what they refer to.
    std::list<UpstreamCheck> m_checks;
};

} // namespace tavro::assistantservice
