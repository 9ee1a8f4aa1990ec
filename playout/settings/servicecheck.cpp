#include "settings/servicecheck.h"

#include "hostkit/optionrules.h"
#include "protocol/httpclientwrapper.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <optional>

namespace tavro::playout {

using aiassistant::HttpClientWrapper;
using Outcome = ServiceReport::Outcome;

namespace {

// The client gives up after ten seconds, but does not say so.
constexpr std::chrono::milliseconds clientsPatience{9'900};
constexpr std::chrono::seconds socketsPatience{5};
constexpr int wrongToken = 401;
constexpr int forbidden = 403;
constexpr int longestMessage = 200;

HttpClientWrapper::Headers headersOf(const ServiceAccess &access)
{
    return {{"deviceId", "device123"},
            {"token", access.token.toStdString()},
            {"userId", access.userId.toStdString()},
            {"node", access.node.toStdString()}};
}

ServiceReport reportOn(const QJsonObject &reply, bool hasToken)
{
    const QJsonValue code = reply.value(QLatin1String("code"));
    if (!code.isDouble())
        return {Outcome::NoAssistant, QStringLiteral("What answers at this address is not an assistant service.")};
    if (code.toInt() != wrongToken && code.toInt() != forbidden)
        return {Outcome::Reachable,
                hasToken ? QStringLiteral("The service is reachable and takes the token.")
                         : QStringLiteral("The service is reachable and needs no token.")};
    const QString message = reply.value(QLatin1String("message")).toString().left(longestMessage);
    return {Outcome::WrongToken,
            hasToken ? QStringLiteral("The service does not take the token: %1").arg(message)
                     : QStringLiteral("The service wants a token: %1").arg(message)};
}

// Why the client got nothing, which it does not tell: what a plain connection comes to.
class Connection {
public:
    explicit Connection(const QUrl &address)
    {
        QObject::connect(&m_socket, qOverload<QAbstractSocket::SocketError>(&QSslSocket::errorOccurred), &m_loop,
                         &QEventLoop::quit);
        QTimer::singleShot(socketsPatience, &m_loop, &QEventLoop::quit);
        if (address.scheme() == QLatin1String("https"))
            startEncrypted(address);
        else
            start(address);
        if (!m_isMade && m_socket.error() == QAbstractSocket::UnknownSocketError)
            m_loop.exec();
    }

    bool isMade() const { return m_isMade; }
    QAbstractSocket::SocketError error() const { return m_socket.error(); }
    QString errorText() const { return m_socket.errorString(); }

private:
    void startEncrypted(const QUrl &address)
    {
        QObject::connect(&m_socket, &QSslSocket::encrypted, &m_loop, [this] { end(); });
        m_socket.connectToHostEncrypted(address.host(), static_cast<quint16>(address.port(443)));
    }

    void start(const QUrl &address)
    {
        QObject::connect(&m_socket, &QAbstractSocket::connected, &m_loop, [this] { end(); });
        m_socket.connectToHost(address.host(), static_cast<quint16>(address.port(80)));
    }

    void end()
    {
        m_isMade = true;
        m_loop.quit();
    }

    QEventLoop m_loop;
    QSslSocket m_socket;
    bool m_isMade = false;
};

ServiceReport reportOnFailure(const QUrl &address)
{
    const Connection connection(address);
    if (connection.isMade())
        return {Outcome::NoAssistant,
                QStringLiteral("Something answers at this address, but not as an assistant service does.")};
    switch (connection.error()) {
    case QAbstractSocket::HostNotFoundError:
        return {Outcome::UnknownHost, QStringLiteral("There is no machine named %1.").arg(address.host())};
    case QAbstractSocket::ConnectionRefusedError:
        return {Outcome::Refused, QStringLiteral("The connection was refused: nothing listens at this address.")};
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
        return {Outcome::Unsafe,
                QStringLiteral("The encrypted connection was not made: %1").arg(connection.errorText())};
    case QAbstractSocket::UnknownSocketError:
        return {Outcome::TimedOut, QStringLiteral("The service did not answer in time.")};
    default:
        return {Outcome::Refused, QStringLiteral("There is no connection: %1").arg(connection.errorText())};
    }
}

} // namespace

ServiceReport checkService(const ServiceAccess &access, const std::shared_ptr<aiassistant::TaskQueue> &worker)
{
    if (const QString problem = hostkit::problemOfService(access.address); !problem.isEmpty())
        return {Outcome::BadAddress, QStringLiteral("This %1.").arg(problem)};
    HttpClientWrapper client;
    client.init(worker);
    QElapsedTimer time;
    time.start();
    const auto result = client.post((access.address + QStringLiteral("/ai/result/filter/")).toStdString(),
                                    headersOf(access), R"({"type":false,"reqId":"connection-test"})", false);
    if (result.ok)
        return reportOn(QJsonDocument::fromJson(QByteArray::fromStdString(result.body)).object(),
                        !access.token.isEmpty());
    if (time.hasExpired(clientsPatience.count()))
        return {Outcome::TimedOut, QStringLiteral("The service did not answer within 10 seconds.")};
    return reportOnFailure(QUrl(access.address));
}

} // namespace tavro::playout
