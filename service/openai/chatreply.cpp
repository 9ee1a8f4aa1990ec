#include "openai/chatreply.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tavro::assistantservice {

namespace {

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

// The arguments come as JSON within a text; some servers leave the text out, some wrap them once more.
QJsonValue argumentsOf(const QJsonValue &given)
{
    const QJsonValue value = given.isString() ? QJsonDocument::fromJson(given.toString().toUtf8()).object() : given;
    const QJsonValue inner = value.toObject().value(QLatin1String("arguments"));
    return inner.isObject() ? inner : value;
}

bool isObjectText(const QJsonValue &given)
{
    return given.isObject() || QJsonDocument::fromJson(given.toString().toUtf8()).isObject();
}

ToolCall readToolCall(const QJsonObject &call)
{
    const QJsonObject function = call.value(QLatin1String("function")).toObject();
    const QJsonValue arguments = function.value(QLatin1String("arguments"));
    return {function.value(QLatin1String("name")).toString(), argumentsOf(arguments).toObject(),
            isObjectText(arguments)};
}

QVector<ToolCall> readToolCalls(const QJsonArray &array)
{
    QVector<ToolCall> calls;
    for (const QJsonValue &call : array) {
        calls.append(readToolCall(call.toObject()));
    }
    return calls;
}

} // namespace

std::optional<ChatReply> readChatReply(const QByteArray &body)
{
    const QJsonObject root = QJsonDocument::fromJson(body).object();
    const QJsonObject choice = root.value(QLatin1String("choices")).toArray().at(0).toObject();
    const QJsonValue message = choice.value(QLatin1String("message"));
    if (!message.isObject()) {
        return {};
    }
    const QString finish = choice.value(QLatin1String("finish_reason")).toString();
    ChatReply reply;
    reply.isCut = finish == QLatin1String("length");
    reply.isFiltered = finish == QLatin1String("content_filter");
    reply.calls = readToolCalls(message[QLatin1String("tool_calls")].toArray());
    reply.text = withoutThoughts(contentText(message[QLatin1String("content")]));
    if (reply.text.isEmpty()) {
        reply.text = message[QLatin1String("refusal")].toString().trimmed();
    }
    return reply;
}

QString withoutThoughts(const QString &text)
{
    const QLatin1String opening("<think>");
    const QLatin1String closing("</think>");
    QString result = text;
    // Where a chat template has opened the section itself, only its end is seen.
    const int firstClosing = result.indexOf(closing);
    if (firstClosing >= 0 && result.leftRef(firstClosing).indexOf(opening) < 0) {
        result.remove(0, firstClosing + closing.size());
    }
    for (int begin = result.indexOf(opening); begin >= 0; begin = result.indexOf(opening)) {
        const int end = result.indexOf(closing, begin);
        result.remove(begin, end < 0 ? result.size() - begin : end + closing.size() - begin);
    }
    return result.trimmed();
}

} // namespace tavro::assistantservice
