#include "nats/connectionoptions.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tavro::runtime {

namespace {

const char *orNull(const QByteArray &text)
{
    return text.isEmpty() ? nullptr : text.constData();
}

// The library puts texts into the JSON of its greeting as they are.
QByteArray inJson(const QString &text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(2, list.size() - 4); // without the list's brackets and the quotes
}

natsStatus setCredentials(natsOptions *out, const NatsOptions &options)
{
    NatsSteps steps;
    if (!options.user.isEmpty())
        steps << natsOptions_SetUserInfo(out, inJson(options.user).constData(), inJson(options.password).constData());
    if (!options.token.isEmpty())
        steps << natsOptions_SetToken(out, inJson(options.token).constData());
    return steps.status();
}

natsStatus setTimes(natsOptions *out, const NatsOptions &options)
{
    NatsSteps steps;
    steps << natsOptions_SetTimeout(out, options.connectTimeout.count())
          << natsOptions_SetWriteDeadline(out, options.writeTimeout.count())
          << natsOptions_SetPingInterval(out, options.pingInterval.count()) << natsOptions_SetMaxPingsOut(out, 2);
    return steps.status();
}

// The library's own way back gives up on wrong credentials and keeps what is sent meanwhile for later; so each
// connection lives once.
natsStatus setManners(natsOptions *out, const NatsOptions &options, const QString &server)
{
    NatsSteps steps;
    steps << natsOptions_SetURL(out, server.toUtf8().constData())
          << natsOptions_SetName(out, orNull(inJson(options.machine))) << natsOptions_SetNoEcho(out, true)
          << natsOptions_SetSendAsap(out, true) << natsOptions_SetAllowReconnect(out, false);
    return steps.status();
}

} // namespace

natsStatus setConnectionOptions(natsOptions *out, const NatsOptions &options, const QString &server)
{
    NatsSteps steps;
    steps << setManners(out, options, server) << setTimes(out, options) << setCredentials(out, options);
    return steps.status();
}

natsStatus setTls(natsOptions *out, const NatsOptions &options, const QString &server)
{
    NatsSteps steps;
    if (options.tls || server.startsWith(QLatin1String("tls:")))
        steps << natsOptions_SetSecure(out, true);
    if (!options.caFile.isEmpty())
        steps << natsOptions_LoadCATrustedCertificates(out, options.caFile.toLocal8Bit().constData());
    return steps.status();
}

} // namespace tavro::runtime
