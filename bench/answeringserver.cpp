#include "answeringserver.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <memory>

namespace {

constexpr char accepted[] = R"({"code":0,"data":{"reqId":"r1"}})";
constexpr char answer[] = "Playing Harbour on layer 2.";
constexpr char ready[] = R"({"code":0,"data":{"answers":["Playing Harbour on layer 2."],"description":""}})";

bool isComplete(const QByteArray &request)
{
    const int head = request.indexOf("\r\n\r\n");
    if (request.startsWith("GET"))
        return head >= 0;
    const int length = request.indexOf("Content-Length: ");
    if (head < 0 || length < 0)
        return false;
    const int begin = length + int(sizeof("Content-Length: ")) - 1;
    const int size = request.mid(begin, request.indexOf('\r', begin) - begin).toInt();
    return request.size() >= head + 4 + size;
}

} // namespace

AnsweringServer::AnsweringServer(const QByteArray &picture)
    : m_picture(picture)
{
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no free port on loopback");
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { serve(); });
    m_server.moveToThread(&m_thread);
    m_thread.start();
}

AnsweringServer::~AnsweringServer()
{
    QMetaObject::invokeMethod(
        &m_server, [this] { m_server.moveToThread(nullptr); }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

QString AnsweringServer::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort());
}

QByteArray AnsweringServer::reply(const QByteArray &request) const
{
    QByteArray body = accepted;
    if (request.startsWith("GET"))
        body = m_picture;
    else if (request.startsWith("POST /ai/result/"))
        body = m_picture.isEmpty() ? QByteArray(ready) : QByteArray(ready).replace(answer, address().toLatin1() + "/p");
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

void AnsweringServer::serve()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const auto request = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, request] {
            request->append(socket->readAll());
            if (!isComplete(*request))
                return;
            socket->write(reply(*request));
            socket->disconnectFromHost();
        });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}
