#include "http/listensocket.h"

#include <cerrno>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace tavro::assistantservice {

namespace {

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses lookUp(const std::string &host, int port)
{
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = AI_PASSIVE;
    addrinfo *found = nullptr;
    const bool known = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found) == 0;
    return {known ? found : nullptr, &::freeaddrinfo};
}

// SO_REUSEADDR alone: with SO_REUSEPORT two services would share one port, and half of the polls would go to the one
// that does not know the request.
void setOptions(int descriptor, int family)
{
    const int yes = 1;
    const int no = 0;
    ::setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (family == AF_INET6) {
        ::setsockopt(descriptor, IPPROTO_IPV6, IPV6_V6ONLY, &no, sizeof no);
    }
}

int listenOn(const addrinfo &address)
{
    const int descriptor =
        ::socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol);
    if (descriptor < 0) {
        return -1;
    }
    setOptions(descriptor, address.ai_family);
    if (::bind(descriptor, address.ai_addr, address.ai_addrlen) == 0 && ::listen(descriptor, SOMAXCONN) == 0) {
        return descriptor;
    }
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return -1;
}

int portOf(int descriptor)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &size);
    return ntohs(address.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6 *>(&address)->sin6_port
                                               : reinterpret_cast<sockaddr_in *>(&address)->sin_port);
}

} // namespace

ListenSocket::~ListenSocket()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

int ListenSocket::open(const std::string &host, int port)
{
    const Addresses addresses = lookUp(host, port);
    errno = 0;
    for (const addrinfo *address = addresses.get(); address != nullptr && m_descriptor < 0;
         address = address->ai_next) {
        m_descriptor = listenOn(*address);
    }
    return m_descriptor < 0 ? 0 : portOf(m_descriptor);
}

int ListenSocket::release()
{
    return std::exchange(m_descriptor, -1);
}

} // namespace tavro::assistantservice
