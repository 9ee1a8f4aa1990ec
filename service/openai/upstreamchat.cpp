#include "openai/upstreamchat.h"

#include "builtin/agentcommands.h"
#include "builtin/wording.h"
#include "openai/chatmessages.h"
#include "openai/instructions.h"
#include "openai/mediaselection.h"
#include "openai/notices.h"
#include "openai/playbacktools.h"
#include "openai/retries.h"
#include "openai/toolcalls.h"
#include "openai/upstreamerror.h"

namespace tavro::assistantservice {

namespace {

constexpr qint64 largestAnswer = 8 * 1024 * 1024;

void append(QString &text, const QString &sentence)
{
    text += text.isEmpty() ? sentence : QStringLiteral("\n\n") + sentence;
}

// What is done is told by what was understood, whatever the model says that it does.
TextResult carriedOut(const ChatReply &reply, const TextRequest &request, Language language)
{
    const MediaNames names(request.mediaList);
    const Understanding understanding = understandCalls(reply.calls, names, request.mediaList);
    TextResult result;
    result.answer = reply.text;
    append(result.answer, describe(understanding, names, request.mediaList.size(), language));
    if (understanding.problem == Problem::None) {
        result.agentCommands = agentCommands(understanding.intents, names);
    }
    return result;
}

TextResult resultOf(const ChatReply &reply, const TextRequest &request, Language language)
{
    TextResult result;
    if (reply.isCut) {
        result.answer = reply.text;
        append(result.answer, noticeText(Notice::Cut, language));
        return result;
    }
    if (!reply.calls.isEmpty()) {
        return carriedOut(reply, request, language);
    }
    result.answer = reply.isFiltered && reply.text.isEmpty() ? noticeText(Notice::Withheld, language) : reply.text;
    if (result.answer.isEmpty()) {
        result.error = {ErrorCode::UpstreamFailed, QStringLiteral("The model gave an empty answer. Please try again.")};
    }
    return result;
}

QJsonObject chatBody(const QString &model, const QVector<ChatMessage> &messages, const TextRequest &request,
                     bool withTools)
{
    const QVector<MediaItem> media = mediaForModel(request.mediaList, messages);
    QJsonObject body{
        {QStringLiteral("model"), model},
        {QStringLiteral("messages"), chatMessages(instructions(media, request.mediaList.size()), messages)}};
    if (withTools) {
        body.insert(QStringLiteral("tools"), playbackTools(media));
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
    UpstreamReply reply = ask(chatBody(model, messages, request, m_settings.tools), patience);
    bool forgotten = false;
    while (isContextTooLong(reply) && dropOlderHalf(messages)) {
        forgotten = true;
        reply = ask(chatBody(model, messages, request, m_settings.tools), patience);
    }
    const std::optional<ChatReply> chat = reply.isGood() ? readChatReply(reply.body) : std::nullopt;
    if (!chat) {
        result.error = failure(reply, model);
        return result;
    }
    const Language language = detectLanguage(request.messages.last().content);
    result = resultOf(*chat, request, language);
    if (forgotten && !result.error) {
        append(result.answer, noticeText(Notice::Forgotten, language));
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
        return unusableAnswer(reply, m_settings.address);
    }
    ServiceError error = upstreamError(reply, m_settings.address, model);
    if (m_settings.tools && refusesMember(reply, "tool")) {
        error.message += QStringLiteral(" (Where a model has no tools, start the service with --tools off.)");
    }
    return error;
}

} // namespace tavro::assistantservice
