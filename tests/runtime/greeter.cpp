#include "greeter.h"

namespace tavro::testsupport {

namespace {

QByteArray greeting(bool tls)
{
    const QByteArray required = tls ? "true" : "false";
    return R"(INFO {"server_id":"x","version":"2.9.10","headers":true,"proto":1,"max_payload":1048576,"tls_required":)"
        + required + "}\r\n";
}

} // namespace

Greeter::Greeter(Then then)
    : m_then(then)
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { greet(); });
    m_server.listen(QHostAddress::LocalHost);
}

void Greeter::greet()
{
    QTcpSocket *const socket = m_server.nextPendingConnection();
    m_sockets += socket;
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { read(*socket); });
    socket->write(greeting(m_then == Then::StallBeforeTls || m_then == Then::EndInTls));
}

// The first ping belongs to the connecting, the second one to what is subscribed then.
void Greeter::read(QTcpSocket &socket)
{
    m_isAnswered = true;
    if (m_then == Then::EndInTls)
        socket.abort();
    if (m_then != Then::EndWhenAsked)
        return;
    while (socket.canReadLine()) {
        if (socket.readLine() != "PING\r\n")
            continue;
        socket.write("PONG\r\n");
        const int pings = socket.property("pings").toInt() + 1;
        socket.setProperty("pings", pings);
        if (pings == 2)
            socket.disconnectFromHost();
    }
}

} // namespace tavro::testsupport
