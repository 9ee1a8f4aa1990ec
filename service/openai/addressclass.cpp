#include "openai/addressclass.h"

#include <QtEndian>

#include <algorithm>
#include <iterator>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>

namespace tavro::assistantservice {

namespace {

struct Network {
    quint32 first;
    int bits;
    AddressClass kind;
};

// What is not listed is public. The ones without a comment are for documentation, measuring and the like.
constexpr Network networks[] = {
    {0x00000000, 8, AddressClass::Forbidden}, // this host
    {0x0a000000, 8, AddressClass::Private},
    {0x64400000, 10, AddressClass::Shared},
    {0x7f000000, 8, AddressClass::Loopback},
    {0xa9fe0000, 16, AddressClass::Forbidden}, // link-local; clouds keep their machines' secrets there
    {0xac100000, 12, AddressClass::Private},
    {0xc0000000, 24, AddressClass::Forbidden},
    {0xc0000200, 24, AddressClass::Forbidden},
    {0xc0586300, 24, AddressClass::Forbidden},
    {0xc0a80000, 16, AddressClass::Private},
    {0xc6120000, 15, AddressClass::Forbidden},
    {0xc6336400, 24, AddressClass::Forbidden},
    {0xcb007100, 24, AddressClass::Forbidden},
    {0xe0000000, 3, AddressClass::Forbidden}, // multicast, reserved, broadcast
};

AddressClass classOfV4(quint32 address)
{
    const auto *const network = std::find_if(std::begin(networks), std::end(networks), [address](const Network &n) {
        return (address ^ n.first) >> (32 - n.bits) == 0;
    });
    return network == std::end(networks) ? AddressClass::Public : network->kind;
}

// A gateway unwraps these, and nobody knows what its own network holds.
AddressClass classOfWrapped(quint32 address)
{
    return classOfV4(address) == AddressClass::Public ? AddressClass::Public : AddressClass::Forbidden;
}

bool isWithin(quint64 upperHalf, quint64 first, int bits)
{
    return (upperHalf ^ first) >> (64 - bits) == 0;
}

AddressClass classOfV6(quint64 upperHalf, quint64 lowerHalf)
{
    const auto lowest = static_cast<quint32>(lowerHalf);
    if (upperHalf == 0) {
        const bool mapped = lowerHalf >> 32 == 0xffff;
        return mapped ? classOfV4(lowest) : lowerHalf == 1 ? AddressClass::Loopback : AddressClass::Forbidden;
    }
    if (upperHalf == 0x0064'ff9b'0000'0000 && lowerHalf >> 32 == 0) {
        return classOfWrapped(lowest);
    }
    if (isWithin(upperHalf, 0x2002'0000'0000'0000, 16)) {
        return classOfWrapped(static_cast<quint32>(upperHalf >> 16));
    }
    if (isWithin(upperHalf, 0xfc00'0000'0000'0000, 7)) {
        return AddressClass::Private;
    }
    const bool special = isWithin(upperHalf, 0x2001'0000'0000'0000, 23)
        || isWithin(upperHalf, 0x2001'0db8'0000'0000, 32) || isWithin(upperHalf, 0x3fff'0000'0000'0000, 20);
    return isWithin(upperHalf, 0x2000'0000'0000'0000, 3) && !special ? AddressClass::Public : AddressClass::Forbidden;
}

} // namespace

AddressClass classOf(const sockaddr &address)
{
    if (address.sa_family == AF_INET) {
        return classOfV4(qFromBigEndian(reinterpret_cast<const sockaddr_in &>(address).sin_addr.s_addr));
    }
    if (address.sa_family == AF_INET6) {
        const unsigned char *const bytes = reinterpret_cast<const sockaddr_in6 &>(address).sin6_addr.s6_addr;
        return classOfV6(qFromBigEndian<quint64>(bytes), qFromBigEndian<quint64>(bytes + 8));
    }
    return AddressClass::Forbidden;
}

AddressClass classOf(const char *digits)
{
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST;
    addrinfo *found = nullptr;
    if (getaddrinfo(digits, nullptr, &hints, &found) != 0) {
        return AddressClass::Forbidden;
    }
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, &freeaddrinfo);
    return classOf(*found->ai_addr);
}

} // namespace tavro::assistantservice
