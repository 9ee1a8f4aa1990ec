#include "openai/transfersockets.h"

#include <algorithm>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

// What waits is asked for last: if more comes in between, too few count as read and not too many.
qint64 bytesReadOf(curl_socket_t socket)
{
    tcp_info info{};
    socklen_t size = sizeof info;
    int waiting = 0;
    const bool known =
        getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0 && ioctl(socket, FIONREAD, &waiting) == 0;
    return known ? static_cast<qint64>(info.tcpi_bytes_received) - waiting : 0;
}

} // namespace

curl_socket_t TransferSockets::open(const curl_sockaddr &address)
{
    const curl_socket_t opened = socket(address.family, address.socktype | SOCK_CLOEXEC, address.protocol);
    if (opened >= 0) {
        m_open.append(opened);
    }
    return opened;
}

int TransferSockets::close(curl_socket_t socket)
{
    m_open.removeAll(socket);
    return ::close(socket);
}

qint64 TransferSockets::bytesRead() const
{
    qint64 most = 0;
    for (const curl_socket_t socket : m_open) {
        most = std::max(most, bytesReadOf(socket));
    }
    return most;
}

} // namespace tavro::assistantservice
