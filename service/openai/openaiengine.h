#pragma once

#include "builtin/builtinengine.h"
#include "openai/upstreamchat.h"
#include "openai/upstreampictures.h"

#include <optional>

namespace tavro::assistantservice {

/// Has the work done by servers with the OpenAI-compatible interface.
class OpenAiEngine : public Engine {
public:
    /// Without a server for pictures they are drawn by rules.
    OpenAiEngine(const ChatSettings &chat, const std::optional<PictureSettings> &pictures);

    TextResult answer(const TextRequest &request, const std::atomic<bool> &cancelled) const override;
    PictureResult draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const override;

private:
    const bool m_tools;
    const BuiltinEngine m_rules;
    const UpstreamChat m_chat;
    std::optional<UpstreamPictures> m_pictures;
};

} // namespace tavro::assistantservice
