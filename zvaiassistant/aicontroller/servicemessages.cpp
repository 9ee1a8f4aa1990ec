#include "aicontroller/servicemessages.h"

#include "aicontroller/replyjson.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

namespace tavro::aiassistant {

namespace {

constexpr int codeReady = 0;
constexpr int codeWorking = 1;

QJsonValue jsonText(const std::string &text)
{
    return QString::fromStdString(text);
}

// Only a number is a code here: the text "0" is a refusal.
bool isAccepted(const QJsonValue &code)
{
    return code.isDouble() && code.toDouble() == 0.0;
}

ResultReply readAnswers(const QJsonObject &data)
{
    ResultReply reply;
    const auto answers = data.constFind(QLatin1String("answers"));
    if (answers == data.constEnd()) {
        reply.kind = ResultReply::Kind::NoAnswers;
        return reply;
    }
    const QJsonArray list = answers->toArray();
    if (list.isEmpty()) {
        reply.kind = ResultReply::Kind::EmptyAnswers;
        return reply;
    }
    reply.kind = ResultReply::Kind::Ready;
    reply.answer = list.first().toString();
    reply.description = data.value(QLatin1String("description")).toString();
    reply.agentCmds = data.value(QLatin1String("agentCmds")).toArray();
    return reply;
}

GenerationReply generationReply(const QJsonDocument &document)
{
    GenerationReply reply;
    if (document.isNull())
        return reply;
    const QJsonObject root = document.object();
    const auto code = root.constFind(QLatin1String("code"));
    if (code == root.constEnd()) {
        reply.kind = GenerationReply::Kind::NoCode;
        return reply;
    }
    if (!isAccepted(*code)) {
        reply.kind = GenerationReply::Kind::Refused;
        reply.message = root.value(QLatin1String("message")).toString();
        return reply;
    }
    reply.kind = GenerationReply::Kind::Accepted;
    const QJsonObject data = root.value(QLatin1String("data")).toObject();
    const auto reqId = data.constFind(QLatin1String("reqId"));
    if (reqId != data.constEnd())
        reply.reqId = reqId->toString();
    return reply;
}

ResultReply resultReply(const QJsonDocument &document)
{
    ResultReply reply;
    if (document.isNull())
        return reply;
    const QJsonObject root = document.object();
    switch (root.value(QLatin1String("code")).toInt()) {
    case codeReady:
        return readAnswers(root.value(QLatin1String("data")).toObject());
    case codeWorking:
        reply.kind = ResultReply::Kind::Working;
        return reply;
    default:
        reply.kind = ResultReply::Kind::Failed;
        reply.message = root.value(QLatin1String("message")).toString();
        return reply;
    }
}

} // namespace

QString Endpoint::text()
{
    return QStringLiteral("/ai/texttotext/generate/");
}

QString Endpoint::picture()
{
    return QStringLiteral("/ai/texttoimage/generate/");
}

QString Endpoint::result()
{
    return QStringLiteral("/ai/result/filter/");
}

QJsonValue message(Author author, const QString &content)
{
    return QJsonObject{
        {QStringLiteral("type"), author == Author::Assistant},
        {QStringLiteral("content"), content},
    };
}

QByteArray textRequestBody(bool deepModel, bool onlineSearch, const QJsonArray &messages, const QJsonArray &mediaList)
{
    const QJsonObject body{
        {QStringLiteral("enableDS"), deepModel},
        {QStringLiteral("enableNet"), onlineSearch},
        {QStringLiteral("messages"), messages},
        {QStringLiteral("mediaList"), mediaList},
    };
    return QJsonDocument(body).toJson();
}

QByteArray pictureRequestBody(const PictureGenerateInfo &info)
{
    const QJsonObject body{
        {QStringLiteral("style"), jsonText(info.style)},
        {QStringLiteral("width"), info.width},
        {QStringLiteral("height"), info.height},
        {QStringLiteral("useSR"), info.useSR},
        {QStringLiteral("content"), jsonText(info.content)},
        {QStringLiteral("enableLogo"), info.enableLogo},
        {QStringLiteral("logoPositon"), info.logoPositon},
        {QStringLiteral("logoLanguage"), info.logoLanguage},
        {QStringLiteral("logoOpacity"), static_cast<double>(info.logoOpacity)},
        {QStringLiteral("logoContent"), jsonText(info.logoContent)},
    };
    return QJsonDocument(body).toJson();
}

QByteArray resultRequestBody(bool pictureMode, const QString &reqId)
{
    const QJsonObject body{
        {QStringLiteral("type"), pictureMode},
        {QStringLiteral("reqId"), reqId},
    };
    return QJsonDocument(body).toJson();
}

GenerationReply readGenerationReply(const QByteArray &body)
{
    return generationReply(readJson(body));
}

ResultReply readResultReply(const QByteArray &body)
{
    return resultReply(readJson(body));
}

std::any readServiceReply(const QByteArray &body)
{
    const QJsonDocument document = readJson(body);
    return ServiceReply{generationReply(document), resultReply(document)};
}

} // namespace tavro::aiassistant
