#include "nats/brokeraddress.h"

#include <QUrl>

#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <type_traits>

namespace tavro::runtime {

namespace {

constexpr int usualPort = 4222;

template <typename Address>
bool isSame(const sockaddr_storage &peer, const addrinfo &broker)
{
    Address one{};
    Address other{};
    std::memcpy(&one, &peer, sizeof one);
    std::memcpy(&other, broker.ai_addr, sizeof other);
    if constexpr (std::is_same_v<Address, sockaddr_in>)
        return one.sin_port == other.sin_port && one.sin_addr.s_addr == other.sin_addr.s_addr;
    else
        return one.sin6_port == other.sin6_port
            && std::memcmp(&one.sin6_addr, &other.sin6_addr, sizeof one.sin6_addr) == 0;
}

} // namespace

BrokerAddress::BrokerAddress(const QString &server)
{
    const QUrl url(server);
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo *list = nullptr;
    const int error = getaddrinfo(url.host(QUrl::FullyEncoded).toLatin1().constData(),
                                  QByteArray::number(url.port(usualPort)).constData(), &wanted, &list);
    m_all.reset(error == 0 ? list : nullptr);
    if (error != 0)
        m_problem = QString::fromLocal8Bit(gai_strerror(error));
}

bool BrokerAddress::isPeerOf(int socket) const
{
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    if (getpeername(socket, reinterpret_cast<sockaddr *>(&peer), &size) != 0)
        return false;
    for (const addrinfo *broker = m_all.get(); broker; broker = broker->ai_next) {
        if (broker->ai_family != peer.ss_family)
            continue;
        if (peer.ss_family == AF_INET ? isSame<sockaddr_in>(peer, *broker) : isSame<sockaddr_in6>(peer, *broker))
            return true;
    }
    return false;
}

void BrokerAddress::Deleter::operator()(addrinfo *list) const
{
    freeaddrinfo(list);
}

} // namespace tavro::runtime
