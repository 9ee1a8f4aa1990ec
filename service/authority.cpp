#include "authority.h"

#include <QRegularExpression>

#include <arpa/inet.h>

namespace tavro::assistantservice {

namespace {

std::optional<in_addr> ipv4(const QByteArray &host)
{
    in_addr address{};
    return inet_pton(AF_INET, host.constData(), &address) == 1 ? std::optional(address) : std::nullopt;
}

std::optional<in6_addr> ipv6(const QByteArray &host)
{
    in6_addr address{};
    return inet_pton(AF_INET6, host.constData(), &address) == 1 ? std::optional(address) : std::nullopt;
}

} // namespace

std::optional<Authority> parseAuthority(const QByteArray &text)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:\\[([0-9A-Fa-f:.]+)\\]|([A-Za-z0-9_-][A-Za-z0-9._-]*?)\\.?)(?::([0-9]{1,5}))?\\z"));
    constexpr int longest = 300;
    constexpr int largestPort = 65535;
    if (text.size() > longest) {
        return std::nullopt;
    }
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(text));
    const int port = match.captured(3).toInt();
    if (!match.hasMatch() || port > largestPort) {
        return std::nullopt;
    }
    const QByteArray bracketed = match.captured(1).toLatin1();
    if (!bracketed.isEmpty() && !ipv6(bracketed)) {
        return std::nullopt;
    }
    return Authority{bracketed.toLower() + match.captured(2).toLower().toLatin1(), port};
}

bool isIpAddress(const QByteArray &host)
{
    return ipv4(host) || ipv6(host);
}

bool isLoopback(const QByteArray &host)
{
    constexpr quint32 loopbackNet = 127;
    const std::optional<in_addr> four = ipv4(host);
    const std::optional<in6_addr> six = ipv6(host);
    return host.toLower() == "localhost" || (four && ntohl(four->s_addr) >> 24 == loopbackNet)
        || (six && IN6_IS_ADDR_LOOPBACK(&*six));
}

bool isEveryAddress(const QByteArray &host)
{
    const std::optional<in_addr> four = ipv4(host);
    const std::optional<in6_addr> six = ipv6(host);
    return (four && four->s_addr == INADDR_ANY) || (six && IN6_IS_ADDR_UNSPECIFIED(&*six));
}

} // namespace tavro::assistantservice
