#include "rawclient.h"

#include <QJsonDocument>

#include <sys/socket.h>

namespace {

constexpr int patienceMs = 30000;
constexpr qint64 readBufferSize = 65536;
const QByteArray headEnd = QByteArrayLiteral("\r\n\r\n");

int contentLength(const QByteArray &reply)
{
    const int at = reply.toLower().indexOf("content-length:");
    return at < 0 ? 0 : reply.mid(at + 15, reply.indexOf("\r\n", at) - at - 15).trimmed().toInt();
}

bool isWhole(const QByteArray &reply)
{
    const int end = reply.indexOf(headEnd);
    return end >= 0 && reply.size() >= end + headEnd.size() + contentLength(reply.left(end + 2));
}

} // namespace

RawClient::RawClient(int port)
{
    // What a test does not read stays on its way, as it does for a slow client.
    m_socket.setReadBufferSize(readBufferSize);
    m_socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    m_socket.waitForConnected(patienceMs);
}

void RawClient::send(const QByteArray &bytes)
{
    m_socket.write(bytes);
    while (m_socket.bytesToWrite() > 0 && m_socket.waitForBytesWritten(patienceMs)) { }
}

void RawClient::sendAndHangUp(const QByteArray &bytes)
{
    const auto descriptor = static_cast<int>(m_socket.socketDescriptor());
    ::send(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_MORE | MSG_NOSIGNAL);
    ::shutdown(descriptor, SHUT_WR);
}

QByteArray RawClient::readReply()
{
    QByteArray reply = m_socket.readAll();
    while (!isWhole(reply) && m_socket.waitForReadyRead(patienceMs)) {
        reply += m_socket.readAll();
    }
    return isWhole(reply) ? reply : QByteArray();
}

bool RawClient::waitForBytes()
{
    return m_socket.bytesAvailable() > 0 || m_socket.waitForReadyRead(patienceMs);
}

QByteArray RawClient::readAll()
{
    QByteArray bytes;
    do {
        bytes += m_socket.readAll();
    } while (m_socket.waitForReadyRead(patienceMs));
    return bytes;
}

bool RawClient::waitForClose()
{
    return m_socket.state() == QAbstractSocket::UnconnectedState || m_socket.waitForDisconnected(patienceMs);
}

QByteArray postBytes(const QByteArray &path, const QByteArray &body, const QByteArray &extraHeaders)
{
    return "POST " + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n" + extraHeaders
        + "Content-Length: " + QByteArray::number(body.size()) + headEnd + body;
}

QByteArray getBytes(const QByteArray &path)
{
    return "GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1" + headEnd;
}

int statusOf(const QByteArray &reply)
{
    return reply.mid(9, 3).toInt();
}

QByteArray bodyOf(const QByteArray &reply)
{
    return reply.mid(reply.indexOf(headEnd) + headEnd.size());
}

QJsonObject jsonOf(const QByteArray &reply)
{
    return QJsonDocument::fromJson(bodyOf(reply)).object();
}
