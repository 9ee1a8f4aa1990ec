#include "serviceclient.h"

QStringList endlessWork()
{
    return {QStringLiteral("--work-ms"), QStringLiteral("3600000")};
}

QByteArray question(const QByteArray &text)
{
    return "{\"enableDS\":false,\"enableNet\":false,\"messages\":[{\"type\":false,\"content\":\"" + text
        + "\"}],\"mediaList\":[{\"id\":\"m1\",\"name\":\"Harbour\"}]}";
}

QByteArray pictureWish(const QByteArray &prompt, int width, int height)
{
    return "{\"style\":\"Monet\",\"width\":" + QByteArray::number(width) + ",\"height\":" + QByteArray::number(height)
        + ",\"useSR\":true,\"content\":\"" + prompt
        + "\",\"enableLogo\":false,\"logoPositon\":0,\"logoLanguage\":false,\"logoOpacity\":0.35,\"logoContent\":"
          "\"width\"}";
}

QByteArray poll(bool picture, const QString &id)
{
    return QByteArray("{\"type\":") + (picture ? "true" : "false") + ",\"reqId\":\"" + id.toLatin1() + "\"}";
}

int codeOf(const QJsonObject &reply)
{
    return reply[QLatin1String("code")].toInt(-1);
}

QString messageOf(const QJsonObject &reply)
{
    return reply[QLatin1String("message")].toString();
}

QString requestIdOf(const QJsonObject &reply)
{
    return reply[QLatin1String("data")][QLatin1String("reqId")].toString();
}

QString firstAnswerOf(const QJsonObject &reply)
{
    return reply[QLatin1String("data")][QLatin1String("answers")][0].toString();
}

ServiceClient::ServiceClient(const ServiceProcess &service, const QByteArray &headers)
    : ServiceClient(service.port(), headers)
{ }

ServiceClient::ServiceClient(int port, const QByteArray &headers)
    : m_raw(port)
    , m_headers(headers)
{ }

QJsonObject ServiceClient::post(const QByteArray &path, const QByteArray &body)
{
    m_raw.send(postBytes(path, body, m_headers));
    return jsonOf(m_raw.readReply());
}

QByteArray ServiceClient::get(const QByteArray &path)
{
    m_raw.send(getBytes(path));
    return m_raw.readReply();
}

QJsonObject ServiceClient::result(bool picture, const QString &id)
{
    QJsonObject reply = post(paths::poll, poll(picture, id));
    while (codeOf(reply) == 1) {
        reply = post(paths::poll, poll(picture, id));
    }
    return reply;
}

QJsonObject ServiceClient::picture(const QByteArray &body)
{
    return result(true, requestIdOf(post(paths::picture, body)));
}
