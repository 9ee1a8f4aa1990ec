#include "openai/chatreply.h"

#include "openai/plaintext.h"
#include "openai/textcalls.h"
#include "openai/thoughts.h"
#include "openai/toolarguments.h"
#include "openai/upstreamjson.h"

#include <QJsonArray>

namespace tavro::assistantservice {

namespace {

constexpr int longestText = 100000;
constexpr int longestName = 100;
// More than are carried out.
constexpr int mostCalls = 100;

// Some servers give the text in parts.
QString contentText(const QJsonValue &content)
{
    if (!content.isArray()) {
        return content.toString();
    }
    QString text;
    const QJsonArray parts = content.toArray();
    for (const QJsonValue &part : parts) {
        text += part.toObject().value(QLatin1String("text")).toString();
    }
    return text;
}

ToolCall readFunction(const QJsonObject &function)
{
    QJsonValue given = function.value(QLatin1String("arguments"));
    if (given.isUndefined()) {
        given = function.value(QLatin1String("parameters"));
    }
    const std::optional<QJsonObject> arguments = readToolArguments(given);
    return {plainLine(function.value(QLatin1String("name")).toString(), longestName), arguments.value_or(QJsonObject()),
            arguments.has_value()};
}

ToolCall readToolCall(const QJsonObject &call)
{
    const QJsonValue function = call.value(QLatin1String("function"));
    return readFunction(function.isObject() ? function.toObject() : call);
}

QVector<ToolCall> readCalls(const QJsonValue &message)
{
    QVector<ToolCall> calls;
    const QJsonArray array = message[QLatin1String("tool_calls")].toArray();
    for (int i = 0; i < array.size() && i < mostCalls; ++i) {
        calls.append(readToolCall(array[i].toObject()));
    }
    // From before there were several.
    const QJsonValue function = message[QLatin1String("function_call")];
    if (calls.isEmpty() && function.isObject()) {
        calls.append(readFunction(function.toObject()));
    }
    return calls;
}

void readText(const QJsonValue &message, ChatReply &reply)
{
    const ChanneledText channels = readChannels(contentText(message[QLatin1String("content")]));
    const QString text = withoutThoughts(channels.text);
    const bool holdsCall = channels.calls || holdsTextCall(text);
    reply.callsAreText = holdsCall && reply.calls.isEmpty();
    reply.isShortened = text.size() > longestText;
    reply.text = holdsCall ? QString() : plainText(clipped(text, longestText)).trimmed();
    if (reply.text.isEmpty() && !holdsCall) {
        reply.text = plainText(clipped(message[QLatin1String("refusal")].toString(), longestText)).trimmed();
    }
}

} // namespace

std::optional<ChatReply> readChatReply(const QByteArray &body)
{
    const QJsonObject choice = readUpstreamObject(body).value(QLatin1String("choices")).toArray().at(0).toObject();
    const QJsonValue message = choice.value(QLatin1String("message"));
    if (!message.isObject()) {
        return {};
    }
    const QString finish = choice.value(QLatin1String("finish_reason")).toString();
    ChatReply reply;
    reply.isCut = finish == QLatin1String("length");
    reply.isFiltered = finish == QLatin1String("content_filter");
    reply.calls = readCalls(message);
    readText(message, reply);
    return reply;
}

} // namespace tavro::assistantservice
