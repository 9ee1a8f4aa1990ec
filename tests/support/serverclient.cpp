#include "serverclient.h"

#include "support/waiting.h"

#include <QUrl>

using namespace tavro::testsupport;

void ServerClient::init()
{
    server = std::make_unique<ScriptedServer>();
    manager = std::make_unique<QNetworkAccessManager>();
}

void ServerClient::cleanup()
{
    manager.reset();
    server.reset();
}

QNetworkReply *ServerClient::post(const QByteArray &body, const QByteArray &target)
{
    QNetworkRequest request(QUrl(server->url() + QString::fromLatin1(target)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setRawHeader("deviceId", "device123");
    return manager->post(request, body);
}

QNetworkReply *ServerClient::finished(QNetworkReply *reply)
{
    if (!eventually([=] { return reply->isFinished(); }))
        qFatal("the reply did not finish");
    return reply;
}
