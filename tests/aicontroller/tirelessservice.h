#pragma once

#include "support/httprequestreader.h"

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

/// A service that answers every request in the same way and keeps nothing of it: for runs that are measured. It
/// lives in the test's thread.
class TirelessService : public QTcpServer {
public:
    explicit TirelessService(const QByteArray &picture)
        : m_picture(picture)
    {
        connect(this, &QTcpServer::newConnection, this, &TirelessService::accept);
        if (!listen(QHostAddress::LocalHost))
            qFatal("no free port");
    }

    QString url() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }
    QString pictureUrl(int number) const { return QStringLiteral("%1/pictures/%2").arg(url()).arg(number); }
    int requestCount() const { return m_requests; }
    int openConnections() const { return findChildren<QTcpSocket *>().size(); }

    /// What the next results say, as JSON.
    void setAnswer(const QByteArray &answer) { m_answer = answer; }

private:
    void accept()
    {
        while (QTcpSocket *const socket = nextPendingConnection()) {
            auto reader = std::make_shared<tavro::testsupport::HttpRequestReader>();
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [=] {
                reader->feed(socket->readAll());
                if (const auto request = reader->next())
                    reply(*socket, bodyFor(request->target));
            });
        }
    }

    QByteArray bodyFor(const QByteArray &target)
    {
        ++m_requests;
        if (target.startsWith("/pictures/"))
            return m_picture;
        if (target.startsWith("/ai/result/"))
            return R"({"code":0,"data":{"answers":[")" + m_answer + R"("]}})";
        return QByteArrayLiteral(R"({"code":0,"data":{"reqId":"r1"}})");
    }

    // One connection for each request: a second POST would wait for the acknowledgement of the first.
    static void reply(QTcpSocket &socket, const QByteArray &body)
    {
        socket.write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size())
                     + "\r\n\r\n" + body);
        socket.disconnectFromHost();
    }

    QByteArray m_picture;
    QByteArray m_answer;
    int m_requests = 0;
};
