#include "nats/natsoptions.h"

#include <QRegularExpression>
#include <QUrl>

namespace tavro::runtime {

namespace {

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

bool isBrokerAddress(const QString &address)
{
    const QUrl url(address, QUrl::StrictMode);
    const QString scheme = url.scheme();
    const bool isBroker = scheme == QLatin1String("nats") || scheme == QLatin1String("tls");
    return url.isValid() && isBroker && !url.host().isEmpty()
        && (url.path().isEmpty() || url.path() == QLatin1String("/")) && !url.hasQuery() && !url.hasFragment();
}

QString problemOfServers(const QStringList &servers)
{
    if (servers.isEmpty())
        return QStringLiteral("no address of a broker is given");
    for (const QString &server : servers) {
        if (!isBrokerAddress(server))
            return QStringLiteral("not an address like nats://127.0.0.1:4222: %1").arg(withoutCredentials(server));
    }
    return {};
}

// Short and in one line, whatever was given.
QString quoted(const QString &text)
{
    constexpr int longest = 80;
    const QString line = text.simplified();
    return line.size() <= longest ? line : line.left(longest) + QChar(0x2026);
}

QString problemOfNames(const NatsOptions &options)
{
    const QString part = QStringLiteral("[A-Za-z0-9_-]{1,64}");
    const QString limits = QStringLiteral("1 to 64 letters, digits, '-' and '_'");
    if (!matches(options.prefix, QStringLiteral("%1(\\.%1){0,7}").arg(part)))
        return QStringLiteral("the prefix may have up to 8 parts with dots between, each of %1: \"%2\"")
            .arg(limits, quoted(options.prefix));
    if (!matches(options.group, part))
        return QStringLiteral("the group may have %1: \"%2\"").arg(limits, quoted(options.group));
    return {};
}

QString problemOfCredentials(const NatsOptions &options)
{
    if (!options.token.isEmpty() && !options.user.isEmpty())
        return QStringLiteral("a token and a user are given; the broker takes only one of them");
    if (options.user.isEmpty() && !options.password.isEmpty())
        return QStringLiteral("a password is given without a user");
    return {};
}

} // namespace

QString problemOf(const NatsOptions &options)
{
    for (const QString &problem :
         {problemOfServers(options.servers), problemOfNames(options), problemOfCredentials(options)}) {
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

// Works on what is no address too: it may still have a credential in it.
QString withoutCredentials(const QString &address)
{
    const int schemeEnd = address.indexOf(QLatin1String("://"));
    const int begin = schemeEnd < 0 ? 0 : schemeEnd + 3;
    const int at = address.lastIndexOf(QLatin1Char('@'));
    return at < begin ? address : address.left(begin) + address.mid(at + 1);
}

} // namespace tavro::runtime
