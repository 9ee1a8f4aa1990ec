#include "replies.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tavro::assistantservice {

namespace {

constexpr int readyCode = 0;
constexpr int workingCode = 1;

Reply jsonReply(int code, const QString &message, const QJsonObject &data)
{
    QJsonObject object{{QStringLiteral("code"), code}, {QStringLiteral("message"), message}};
    if (!data.isEmpty()) {
        object.insert(QStringLiteral("data"), data);
    }
    Reply reply;
    reply.code = code;
    reply.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return reply;
}

} // namespace

Reply errorReply(const ServiceError &error)
{
    return jsonReply(static_cast<int>(error.code), error.message, {});
}

Reply httpErrorReply(const ServiceError &error)
{
    Reply reply = errorReply(error);
    reply.status = static_cast<int>(error.code);
    return reply;
}

Reply acceptedReply(const QString &requestId)
{
    Reply reply = jsonReply(readyCode, QString(), {{QStringLiteral("reqId"), requestId}});
    reply.requestId = requestId;
    return reply;
}

Reply workingReply()
{
    return jsonReply(workingCode, QStringLiteral("Still working."), {});
}

Reply readyReply(const PollResult &result, const QString &pictureAddress)
{
    const QString answer = pictureAddress.isNull() ? result.answer : pictureAddress;
    return jsonReply(readyCode, QString(),
                     {{QStringLiteral("answers"), QJsonArray{answer}},
                      {QStringLiteral("description"), result.description},
                      {QStringLiteral("agentCmds"), result.agentCommands}});
}

} // namespace tavro::assistantservice
