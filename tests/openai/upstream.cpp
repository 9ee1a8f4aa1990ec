#include "upstream.h"

#include <QJsonDocument>

using namespace tavro::assistantservice;

namespace upstream {

ScriptedAnswer message(const QJsonObject &message, const QString &finishReason)
{
    const QJsonObject choice{{QStringLiteral("index"), 0},
                             {QStringLiteral("message"), message},
                             {QStringLiteral("finish_reason"), finishReason}};
    return ScriptedAnswer::json({{QStringLiteral("object"), QStringLiteral("chat.completion")},
                                 {QStringLiteral("choices"), QJsonArray{choice}}});
}

ScriptedAnswer text(const QString &text, const QString &finishReason)
{
    return message({{QStringLiteral("role"), QStringLiteral("assistant")}, {QStringLiteral("content"), text}},
                   finishReason);
}

QJsonObject callingMessage(const QString &tool, const QJsonObject &arguments)
{
    const QString written = QString::fromUtf8(QJsonDocument(arguments).toJson(QJsonDocument::Compact));
    const QJsonObject function{{QStringLiteral("name"), tool}, {QStringLiteral("arguments"), written}};
    const QJsonObject call{{QStringLiteral("id"), QStringLiteral("call_1")},
                           {QStringLiteral("type"), QStringLiteral("function")},
                           {QStringLiteral("function"), function}};
    return {{QStringLiteral("role"), QStringLiteral("assistant")},
            {QStringLiteral("content"), QJsonValue::Null},
            {QStringLiteral("tool_calls"), QJsonArray{call}}};
}

ScriptedAnswer failure(int status, const QString &text, const QJsonValue &code)
{
    const QJsonObject error{{QStringLiteral("message"), text}, {QStringLiteral("code"), code}};
    return ScriptedAnswer::json({{QStringLiteral("error"), error}}).withStatus(status);
}

UpstreamAddress addressOf(const ScriptedServer &server)
{
    return *parseUpstreamAddress(server.url());
}

ChatSettings chatSettings(const ScriptedServer &server)
{
    ChatSettings settings;
    settings.address = addressOf(server);
    settings.key = QByteArrayLiteral("secret-key");
    settings.model = QStringLiteral("small");
    settings.retryUnit = std::chrono::milliseconds(1);
    return settings;
}

TextRequest question(const QString &text)
{
    TextRequest request;
    request.messages = {{false, text}};
    request.mediaList = {{QStringLiteral("m1"), QStringLiteral("Harbour.mp4")},
                         {QStringLiteral("m2"), QStringLiteral("Sunset Beach")},
                         {QStringLiteral("m3"), QStringLiteral("Sunset City")}};
    return request;
}

TextResult ask(const ScriptedServer &server, const QString &text)
{
    const std::atomic<bool> cancelled{false};
    return UpstreamChat(chatSettings(server)).answer(question(text), cancelled);
}

} // namespace upstream
