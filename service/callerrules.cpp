#include "callerrules.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

// "localhost" leads to this machine alone and so to the service only where it listens there.
bool isReachedAsLocalhost(const QByteArray &listenHost)
{
    return isLoopback(listenHost) || isEveryAddress(listenHost);
}

QSet<QByteArray> namesOf(const ServiceNames &names)
{
    const QByteArray machine = names.machine.toLower();
    const QByteArray shortName = machine.split('.').constFirst();
    QSet<QByteArray> all{names.listenHost.toLower(), machine, shortName, shortName + ".local"};
    if (isReachedAsLocalhost(names.listenHost)) {
        all.unite({"localhost", "127.0.0.1", "::1"});
    }
    if (machine.isEmpty()) {
        all.remove(".local");
    }
    all.remove(QByteArray());
    return all;
}

// Empty for everything but a web address, "null" among it.
QByteArray authorityOfOrigin(const QByteArray &origin)
{
    const QByteArray lower = origin.toLower();
    for (const char *const scheme : {"http://", "https://"}) {
        if (lower.startsWith(scheme)) {
            return lower.mid(static_cast<int>(qstrlen(scheme)));
        }
    }
    return {};
}

ServiceError unknownHost(const std::optional<Authority> &host)
{
    if (!host) {
        return {ErrorCode::WrongHost, QStringLiteral("The request's Host header is not a name or an address.")};
    }
    return {ErrorCode::WrongHost,
            QStringLiteral("The assistant service does not know itself by the name \"%1\". If it is reached so, start "
                           "it with --allow-host %1.")
                .arg(QString::fromLatin1(host->host))};
}

ServiceError foreignOrigin()
{
    return {ErrorCode::Forbidden,
            QStringLiteral("The assistant service answers no web page of another address. If the page is meant to use "
                           "it, start the service with --allow-host and the page's host.")};
}

ServiceError checkContentType(const QByteArray &contentType)
{
    if (contentType.split(';').constFirst().trimmed().toLower() == "application/json") {
        return {};
    }
    return {ErrorCode::WrongMediaType,
            QStringLiteral("The request must be JSON and say so: Content-Type: application/json.")};
}

} // namespace

CallerRules::CallerRules(const ServiceNames &names)
    : m_names(namesOf(names))
    , m_others(names.others)
{ }

ServiceError CallerRules::check(const RequestHead &head) const
{
    if (const ServiceError error = checkHost(head.host)) {
        return error;
    }
    if (const ServiceError error = checkOrigin(head)) {
        return error;
    }
    return head.method == "POST" ? checkContentType(head.contentType) : ServiceError();
}

// A page's name may be made to lead to this machine after it was loaded; the browser then takes the service for a part
// of the page. Only the name in the Host header tells.
ServiceError CallerRules::checkHost(const QByteArray &host) const
{
    if (host.isEmpty()) {
        return {};
    }
    const std::optional<Authority> authority = parseAuthority(host);
    const bool own =
        authority && (isIpAddress(authority->host) || m_names.contains(authority->host) || isNamedByUser(*authority));
    return own ? ServiceError() : unknownHost(authority);
}

ServiceError CallerRules::checkOrigin(const RequestHead &head) const
{
    if (head.origin.isEmpty()) {
        const bool fromElsewhere = head.fetchSite == "cross-site" || head.fetchSite == "same-site";
        return fromElsewhere && head.method == "POST" ? foreignOrigin() : ServiceError();
    }
    const std::optional<Authority> origin = parseAuthority(authorityOfOrigin(head.origin));
    return origin && isOwnOrigin(*origin, head.host) ? ServiceError() : foreignOrigin();
}

// Any address will do as a host, but not as an origin: a foreign page may well come from a bare address. Nor will
// another port of this machine, where somebody else's program may serve pages.
bool CallerRules::isOwnOrigin(const Authority &origin, const QByteArray &host) const
{
    if (isNamedByUser(origin)) {
        return true;
    }
    const std::optional<Authority> own = parseAuthority(host);
    return own && origin.port == own->port && (origin.host == own->host || m_names.contains(origin.host));
}

bool CallerRules::isNamedByUser(const Authority &authority) const
{
    return std::any_of(m_others.begin(), m_others.end(), [&authority](const Authority &other) {
        return other.host == authority.host && (other.port == 0 || other.port == authority.port);
    });
}

} // namespace tavro::assistantservice
