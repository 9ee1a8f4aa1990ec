// What a connection may bring the service: any bytes, to the real server in this process, which has a picture stored.
// "@PICTURE@" in an input stands for that picture's id, which nobody can guess, and "@TOKEN@" for the token.

#include "http/httpserver.h"
#include "servicelog.h"
#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <arpa/inet.h>
#include <array>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace tavro::assistantservice;

const QByteArray token = "a-token";
// In the memory of the process, and in no input.
const QByteArray secret = "a-key-that-no-answer-may-hold";

/// Nothing here is about the answers.
class QuickEngine : public Engine {
public:
    TextResult answer(const TextRequest &, const std::atomic<bool> &) const override
    {
        return {{}, QStringLiteral("answer"), {}};
    }
    PictureResult draw(const PictureRequest &, const std::atomic<bool> &) const override
    {
        return {{}, QByteArray(5000, 'p'), "image/png", QStringLiteral("picture"), {}};
    }
};

AssistantSettings settings()
{
    AssistantSettings settings;
    settings.token = token;
    settings.storeLimits.finished = 100;
    settings.storeLimits.keep = std::chrono::hours(24);
    return settings;
}

class Service {
public:
    Service()
    {
        setLogLevel(QStringLiteral("off"));
        m_port = m_server.bind("127.0.0.1", 0);
        demand(m_port > 0 && m_server.start(CallerRules({"127.0.0.1", {}, {}})));
        m_pictureId = storePicture();
    }

    /// What comes back.
    QByteArray exchange(QByteArray request)
    {
        // Newer requests have taken its place.
        if (m_assistant.picture(QString::fromLatin1(m_pictureId)).status != 200)
            m_pictureId = storePicture();
        request.replace("@PICTURE@", m_pictureId).replace("@TOKEN@", token);
        const int client = connected();
        ::send(client, request.constData(), static_cast<size_t>(request.size()), MSG_NOSIGNAL);
        QByteArray reply = received(client);
        ::close(client);
        return reply;
    }

private:
    int connected() const;
    static bool isReadable(int client, int milliseconds);
    static QByteArray received(int client);
    QByteArray storePicture();

    Assistant m_assistant{settings(), std::make_unique<QuickEngine>()};
    HttpServer m_server{{}, m_assistant};
    int m_port = 0;
    QByteArray m_pictureId;
};

int Service::connected() const
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(m_port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    demand(::connect(client, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0);
    return client;
}

bool Service::isReadable(int client, int milliseconds)
{
    pollfd waiting{client, POLLIN, 0};
    return ::poll(&waiting, 1, milliseconds) == 1;
}

// The service hangs up once the client is done, but does not see it where its end comes together with its data.
QByteArray Service::received(int client)
{
    isReadable(client, 2);
    ::shutdown(client, SHUT_WR);
    QByteArray reply;
    std::array<char, 8192> piece{};
    while (isReadable(client, 100)) {
        const ssize_t size = ::recv(client, piece.data(), piece.size(), 0);
        if (size <= 0)
            break;
        reply.append(piece.data(), static_cast<int>(size));
    }
    return reply;
}

QByteArray Service::storePicture()
{
    const Caller caller{token, "127.0.0.1"};
    const Reply accepted = m_assistant.generatePicture(
        caller,
        R"({"style":"","width":16,"height":16,"useSR":false,"content":"","enableLogo":false,"logoPositon":0,)"
        R"("logoLanguage":false,"logoOpacity":0,"logoContent":""})");
    const QJsonValue id = QJsonDocument::fromJson(accepted.body)[QStringLiteral("data")][QStringLiteral("reqId")];
    const QByteArray poll = R"({"type":true,"reqId":")" + id.toString().toLatin1() + "\"}";
    QJsonValue address;
    while (!address.isString()) {
        QThread::msleep(1);
        const QJsonDocument reply = QJsonDocument::fromJson(m_assistant.pollResult(caller, poll).body);
        address = reply[QStringLiteral("data")][QStringLiteral("answers")][0];
    }
    return address.toString().section(QLatin1Char('/'), -1).toLatin1();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    static Service service;
    const QByteArray reply = service.exchange(Input(data, size).rest());
    demand(reply.isEmpty() || reply.startsWith("HTTP/1."));
    demand(!reply.contains(secret));
    return 0;
}
