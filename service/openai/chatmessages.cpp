#include "openai/chatmessages.h"

#include <QJsonObject>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int mostMessages = 60;
constexpr int mostCharacters = 120000;

QJsonObject chatMessage(const char *role, const QString &content)
{
    return {{QStringLiteral("role"), QLatin1String(role)}, {QStringLiteral("content"), content}};
}

void beginWithUser(QVector<ChatMessage> &messages)
{
    const auto user = std::find_if(messages.begin(), messages.end(),
                                   [](const ChatMessage &message) { return !message.fromAssistant; });
    messages.erase(messages.begin(), user);
}

QVector<ChatMessage> newest(const QVector<ChatMessage> &messages)
{
    int characters = 0;
    int count = 0;
    for (auto message = messages.rbegin(); message != messages.rend() && count < mostMessages; ++message, ++count) {
        characters += message->content.size();
        if (count > 0 && characters > mostCharacters) {
            break;
        }
    }
    return messages.mid(messages.size() - count);
}

} // namespace

QVector<ChatMessage> alternating(const QVector<ChatMessage> &messages)
{
    QVector<ChatMessage> result;
    const QVector<ChatMessage> kept = newest(messages);
    for (const ChatMessage &message : kept) {
        if (!result.isEmpty() && result.last().fromAssistant == message.fromAssistant) {
            result.last().content += QStringLiteral("\n\n") + message.content;
        } else {
            result.append(message);
        }
    }
    beginWithUser(result);
    return result;
}

bool dropOlderHalf(QVector<ChatMessage> &messages)
{
    if (messages.size() < 2) {
        return false;
    }
    messages.remove(0, (messages.size() + 1) / 2);
    beginWithUser(messages);
    return !messages.isEmpty();
}

QJsonArray chatMessages(const QString &instructions, const QString &data, const QVector<ChatMessage> &messages)
{
    QJsonArray list{chatMessage("system", instructions)};
    QString before = data + QStringLiteral("\n\n");
    for (const ChatMessage &message : messages) {
        list.append(chatMessage(message.fromAssistant ? "assistant" : "user", before + message.content));
        before.clear();
    }
    return list;
}

} // namespace tavro::assistantservice
