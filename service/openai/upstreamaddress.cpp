#include "openai/upstreamaddress.h"

#include <QUrl>

namespace tavro::assistantservice {

namespace {

constexpr int httpPort = 80;
constexpr int httpsPort = 443;

int standardPort(bool secure)
{
    return secure ? httpsPort : httpPort;
}

QString withScheme(const QString &text)
{
    return text.contains(QLatin1String("://")) ? text : QStringLiteral("http://") + text;
}

void chopSlashes(QString &path)
{
    while (path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
}

// What stands in a server's instructions is often the address of one endpoint.
QString basePath(QString path)
{
    chopSlashes(path);
    for (const char *endpoint : {"/chat/completions", "/completions", "/images/generations", "/models"}) {
        if (path.endsWith(QLatin1String(endpoint))) {
            path.chop(static_cast<int>(qstrlen(endpoint)));
            break;
        }
    }
    chopSlashes(path);
    return path.isEmpty() ? QStringLiteral("/v1") : path;
}

bool isUsable(const QUrl &url)
{
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && web && !url.host().isEmpty() && url.userInfo().isEmpty() && !url.hasQuery()
        && !url.hasFragment() && url.port() != 0;
}

} // namespace

QString UpstreamAddress::authority() const
{
    const QString name = host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]").arg(host) : host;
    return port == standardPort(secure) ? name : QStringLiteral("%1:%2").arg(name).arg(port);
}

QString UpstreamAddress::root() const
{
    return (secure ? QStringLiteral("https://") : QStringLiteral("http://")) + authority();
}

bool UpstreamAddress::operator==(const UpstreamAddress &other) const
{
    return secure == other.secure && host == other.host && port == other.port && path == other.path;
}

std::optional<UpstreamAddress> parseUpstreamAddress(const QString &text)
{
    const QUrl url(withScheme(text.trimmed()), QUrl::StrictMode);
    if (!isUsable(url)) {
        return {};
    }
    UpstreamAddress address;
    address.secure = url.scheme() == QLatin1String("https");
    address.host = url.host(QUrl::FullyEncoded);
    address.port = url.port(standardPort(address.secure));
    address.path = basePath(url.path(QUrl::FullyEncoded));
    return address;
}

} // namespace tavro::assistantservice
