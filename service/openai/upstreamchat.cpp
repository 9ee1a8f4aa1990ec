#include "openai/upstreamchat.h"

#include "openai/chatmessages.h"
#include "openai/chatresult.h"
#include "openai/instructions.h"
#include "openai/medialibrary.h"
#include "openai/notices.h"
#include "openai/playbacktools.h"
#include "openai/retries.h"
#include "openai/upstreamerror.h"

namespace tavro::assistantservice {

namespace {

constexpr qint64 largestAnswer = 8 * 1024 * 1024;

QJsonObject chatBody(const QString &model, const QVector<ChatMessage> &messages, const QVector<ShownItem> &shown,
                     int librarySize, bool withTools)
{
    QJsonObject body{
        {QStringLiteral("model"), model},
        {QStringLiteral("stream"), false},
        {QStringLiteral("messages"), chatMessages(instructions(), libraryBlock(shown, librarySize), messages)}};
    if (withTools) {
        body.insert(QStringLiteral("tools"), playbackTools(shown));
    }
    return body;
}

} // namespace

UpstreamChat::UpstreamChat(ChatSettings settings)
    : m_settings(std::move(settings))
    , m_client(m_settings.address, m_settings.key)
    , m_onlyModel(m_client)
{ }

TextResult UpstreamChat::answer(const TextRequest &request, const std::atomic<bool> &cancelled) const
{
    const Patience patience(m_settings.limit, cancelled);
    TextResult result;
    QString model;
    result.error = chooseModel(request, patience, model);
    if (result.error) {
        return result;
    }
    QVector<ChatMessage> messages = alternating(request.messages);
    const QVector<ShownItem> shown = mediaForModel(request.mediaList, messages);
    const auto body = [&] { return chatBody(model, messages, shown, request.mediaList.size(), m_settings.tools); };
    UpstreamReply reply = ask(body(), patience);
    bool forgotten = false;
    while (isContextTooLong(reply) && dropOlderHalf(messages)) {
        forgotten = true;
        reply = ask(body(), patience);
    }
    const std::optional<ChatReply> chat = reply.isGood() ? readChatReply(reply.body) : std::nullopt;
    if (!chat) {
        result.error = failure(reply, model);
        return result;
    }
    const Language language = detectLanguage(request.messages.last().content);
    result = chatResult(*chat, request, shown, language);
    if (forgotten && !result.error) {
        result.answer += QStringLiteral("\n\n") + noticeText(Notice::Forgotten, language);
    }
    return result;
}

ServiceError UpstreamChat::chooseModel(const TextRequest &request, const Patience &patience, QString &model) const
{
    model = m_settings.model;
    if (request.onlineSearch && !m_settings.searchModel.isEmpty()) {
        model = m_settings.searchModel;
    } else if (request.deepModel && !m_settings.deepModel.isEmpty()) {
        model = m_settings.deepModel;
    }
    return model.isEmpty() ? m_onlyModel.find(patience, model) : ServiceError();
}

UpstreamReply UpstreamChat::ask(const QJsonObject &body, const Patience &patience) const
{
    const QString target = m_settings.address.target("/chat/completions");
    return withRetries([&] { return m_client.post(target, body, largestAnswer, patience); }, m_settings.retryUnit,
                       patience);
}

ServiceError UpstreamChat::failure(const UpstreamReply &reply, const QString &model) const
{
    if (reply.isGood()) {
        return unusableAnswer(reply, m_settings.address, "choices");
    }
    ServiceError error = upstreamError(reply, m_settings.address, model);
    if (m_settings.tools && lacksToolSetup(reply)) {
        error.message += QStringLiteral(" (Start the model's server so, or this service with --tools off.)");
    } else if (m_settings.tools && refusesMember(reply, "tool")) {
        error.message += QStringLiteral(" (Where a model has no tools, start the service with --tools off.)");
    }
    return error;
}

} // namespace tavro::assistantservice
