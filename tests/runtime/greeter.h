#pragma once

#include <QList>
#include <QTcpServer>
#include <QTcpSocket>

namespace tavro::testsupport {

/// A broker that greets, and then does what a test wants of it. Lives in the test's event loop.
class Greeter {
public:
    enum class Then {
        Stall, ///< says no more
        StallBeforeTls, ///< insists on TLS and says no more
        EndInTls, ///< insists on TLS and closes when it is asked for it
        EndWhenAsked, ///< answers the first two pings, as a broker does, and closes
    };

    explicit Greeter(Then then);

    QString url() const { return QStringLiteral("nats://127.0.0.1:%1").arg(m_server.serverPort()); }
    quint16 port() const { return m_server.serverPort(); }
    int greeted() const { return m_sockets.size(); } ///< connections so far
    bool isAnswered() const { return m_isAnswered; } ///< the other side has said something

private:
    void greet();
    void read(QTcpSocket &socket);

    const Then m_then;
    QTcpServer m_server;
    QList<QTcpSocket *> m_sockets;
    bool m_isAnswered = false;
};

} // namespace tavro::testsupport
