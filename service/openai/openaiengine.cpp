#include "openai/openaiengine.h"

#include "builtin/conversation.h"
#include "servicelog.h"

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

QJsonObject OpenAiEngine::state() const
{
    const QVector<const UpstreamClient *> servers = clients();
    QJsonObject state{{QStringLiteral("upstream"), servers.first()->state()}};
    if (servers.size() > 1) {
        state.insert(QStringLiteral("pictureUpstream"), servers.last()->state());
    }
    return state;
}

void OpenAiEngine::begin()
{
    const QVector<const UpstreamClient *> servers = clients();
    for (const UpstreamClient *const server : servers) {
        if (server->showsKey()) {
            serviceLog().warn("event=key-unprotected address={} text=\"the key goes over the net as it is; use https\"",
                              server->address().text().toStdString());
        }
        m_checks.emplace_back(*server);
    }
}

// One for both tasks is looked at once.
QVector<const UpstreamClient *> OpenAiEngine::clients() const
{
    QVector<const UpstreamClient *> clients{&m_chat.client()};
    if (m_pictures && !(m_pictures->client().address() == m_chat.client().address())) {
        clients.append(&m_pictures->client());
    }
    return clients;
}

} // namespace tavro::assistantservice
