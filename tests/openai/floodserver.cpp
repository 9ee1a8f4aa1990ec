#include "floodserver.h"

#include <QtEndian>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace upstream {

namespace {

// A greeting of TLS is as good as one.
void readHead(int socket)
{
    QByteArray head;
    char piece[4096];
    while (!head.contains("\r\n\r\n") && !head.startsWith('\x16')) {
        const ssize_t size = recv(socket, piece, sizeof piece, 0);
        if (size <= 0) {
            return;
        }
        head.append(piece, static_cast<int>(size));
    }
}

} // namespace

FloodServer::FloodServer(const QByteArray &beginning, const QByteArray &piece)
    : m_listening(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    // What the system holds for a client should count little.
    const int smallBuffer = 64 * 1024;
    setsockopt(m_listening, SOL_SOCKET, SO_SNDBUF, &smallBuffer, sizeof smallBuffer);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = qToBigEndian(quint32(INADDR_LOOPBACK));
    socklen_t size = sizeof address;
    auto *const generic = reinterpret_cast<sockaddr *>(&address);
    if (bind(m_listening, generic, size) == 0 && listen(m_listening, 1) == 0
        && getsockname(m_listening, generic, &size) == 0) {
        m_port = qFromBigEndian(address.sin_port);
    }
    m_thread = std::thread([this, beginning, piece] { serve(beginning, piece); });
}

FloodServer::~FloodServer()
{
    sentBytes();
    close(m_listening);
}

// A client that never came must not be waited for.
qint64 FloodServer::sentBytes()
{
    if (m_thread.joinable()) {
        shutdown(m_listening, SHUT_RDWR);
        m_thread.join();
    }
    return m_sent;
}

void FloodServer::serve(const QByteArray &beginning, const QByteArray &piece)
{
    const int client = accept(m_listening, nullptr, nullptr);
    if (client < 0) {
        return;
    }
    readHead(client);
    bool goesOn = sendWhole(client, beginning);
    while (goesOn && !piece.isEmpty() && m_sent < mostBytes) {
        goesOn = sendWhole(client, piece);
    }
    close(client);
}

bool FloodServer::sendWhole(int socket, const QByteArray &bytes)
{
    for (int at = 0; at < bytes.size();) {
        const ssize_t size = send(socket, bytes.constData() + at, static_cast<size_t>(bytes.size() - at), MSG_NOSIGNAL);
        if (size <= 0) {
            return false;
        }
        at += static_cast<int>(size);
        m_sent += size;
    }
    return true;
}

} // namespace upstream
