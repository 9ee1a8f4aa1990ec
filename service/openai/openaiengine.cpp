#include "openai/openaiengine.h"

#include "builtin/conversation.h"

namespace tavro::assistantservice {

namespace {

bool isPlayback(const TextRequest &request)
{
    return understandConversation(request.messages, MediaNames(request.mediaList)).isPlayback();
}

} // namespace

OpenAiEngine::OpenAiEngine(const ChatSettings &chat, const std::optional<PictureSettings> &pictures)
    : m_tools(chat.tools)
    , m_chat(chat)
{
    if (pictures) {
        m_pictures.emplace(*pictures);
    }
}

TextResult OpenAiEngine::answer(const TextRequest &request, const std::atomic<bool> &cancelled) const
{
    return !m_tools && isPlayback(request) ? m_rules.answer(request, cancelled) : m_chat.answer(request, cancelled);
}

PictureResult OpenAiEngine::draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const
{
    return m_pictures ? m_pictures->draw(request, cancelled) : m_rules.draw(request, cancelled);
}

} // namespace tavro::assistantservice
