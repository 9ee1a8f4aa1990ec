#include "nats/natssession.h"

#include "nats/connectionoptions.h"

#include <utility>

namespace tavro::runtime {

namespace {

using Incoming = std::shared_ptr<NatsIncoming>;

// The closure of a connection goes with its last callback, that of a subscription with its thread.
void onClosed(natsConnection *connection, void *closure)
{
    const std::unique_ptr<Incoming> incoming(static_cast<Incoming *>(closure));
    const char *text = nullptr;
    natsConnection_GetLastError(connection, &text);
    (*incoming)->put(LinkEvent::Kind::Closed, text ? text : "");
}

void onTrouble(natsConnection *connection, natsSubscription * /*subscription*/, natsStatus status, void *closure)
{
    const char *text = nullptr;
    natsConnection_GetLastError(connection, &text);
    const bool hasText = text && *text;
    (*static_cast<Incoming *>(closure))->put(LinkEvent::Kind::Trouble, hasText ? text : natsStatus_GetText(status));
}

struct Listening {
    Incoming incoming;
    NatsIncoming::Kind kind;
};

void onMessage(natsConnection * /*connection*/, natsSubscription * /*subscription*/, natsMsg *message, void *closure)
{
    const NatsPointer<natsMsg> owned(message);
    const auto *const listening = static_cast<Listening *>(closure);
    listening->incoming->receive(listening->kind, *message);
}

void onSubscriptionEnded(void *closure)
{
    delete static_cast<Listening *>(closure);
}

natsStatus setCallbacks(natsOptions *out, Incoming *incoming)
{
    NatsSteps steps;
    steps << natsOptions_SetClosedCB(out, onClosed, incoming) << natsOptions_SetErrorHandler(out, onTrouble, incoming);
    return steps.status();
}

NatsSession::Opened failure(bool isRefused, const QString &text)
{
    return {nullptr, isRefused, text.toStdString()};
}

// What the library says of a certificate, without the place in its source.
QString reasonOf(const char *lastError)
{
    const QString text = QString::fromUtf8(lastError);
    const int placeEnd = text.startsWith(QLatin1Char('(')) ? text.indexOf(QLatin1String("): ")) : -1;
    return placeEnd < 0 ? text : text.mid(placeEnd + 3);
}

NatsSession::Opened failureOf(natsStatus status, const QString &server)
{
    const QString shown = withoutCredentials(server);
    natsStatus lastStatus = NATS_OK;
    const char *const lastError = nats_GetLastError(&lastStatus);
    switch (status) {
    case NATS_CONNECTION_AUTH_FAILED:
        return failure(true, QStringLiteral("%1 refuses this machine: wrong or missing credentials").arg(shown));
    case NATS_SSL_ERROR:
        return failure(true, QStringLiteral("%1 is not trusted: %2").arg(shown, reasonOf(lastError)));
    case NATS_SECURE_CONNECTION_WANTED:
        return failure(true, QStringLiteral("%1 offers no TLS, which this machine insists on").arg(shown));
    case NATS_SECURE_CONNECTION_REQUIRED:
        return failure(true, QStringLiteral("%1 insists on TLS").arg(shown));
    default:
        return failure(
            false, QStringLiteral("%1 cannot be reached: %2").arg(shown, QLatin1String(natsStatus_GetText(status))));
    }
}

} // namespace

NatsSession::Opened NatsSession::open(const NatsOptions &options, const QString &server, Incoming incoming)
{
    natsOptions *raw = nullptr;
    natsStatus status = natsOptions_Create(&raw);
    const NatsPointer<natsOptions> out(raw);
    auto closure = std::make_unique<Incoming>(incoming);
    NatsSteps steps;
    steps << status << setConnectionOptions(raw, options, server) << setCallbacks(raw, closure.get());
    if (steps.status() != NATS_OK)
        return failureOf(steps.status(), server);
    if (setTls(raw, options, server) != NATS_OK)
        return failure(true, QStringLiteral("the authorities' file cannot be used: %1").arg(options.caFile));
    natsConnection *connection = nullptr;
    status = natsConnection_Connect(&connection, raw);
    if (status != NATS_OK)
        return failureOf(status, server);
    static_cast<void>(closure.release()); // now the last callback's
    return {std::shared_ptr<NatsSession>(new NatsSession(NatsPointer<natsConnection>(connection), std::move(incoming))),
            false,
            {}};
}

NatsSession::NatsSession(NatsPointer<natsConnection> connection, Incoming incoming)
    : m_connection(std::move(connection))
    , m_incoming(std::move(incoming))
{ }

natsStatus NatsSession::listen(NatsIncoming::Kind kind, const std::string &subject)
{
    return subscribe(kind, subject, m_subscriptions.emplace_back());
}

natsStatus NatsSession::listenToCalls(const std::string &subject)
{
    m_calls.reset();
    return subject.empty() ? NATS_OK : subscribe(NatsIncoming::Kind::Call, subject, m_calls);
}

natsStatus NatsSession::subscribe(NatsIncoming::Kind kind, const std::string &subject,
                                  NatsPointer<natsSubscription> &subscription)
{
    auto listening = std::make_unique<Listening>(Listening{m_incoming, kind});
    natsSubscription *raw = nullptr;
    const natsStatus status =
        natsConnection_Subscribe(&raw, m_connection.get(), subject.c_str(), onMessage, listening.get());
    subscription.reset(raw);
    if (status != NATS_OK)
        return status;
    // Where the connection is lost in between, the callback may be running: then the closure is left to it.
    Listening *const closure = listening.release();
    return natsSubscription_SetOnCompleteCB(raw, onSubscriptionEnded, closure);
}

natsStatus NatsSession::flush(std::chrono::milliseconds limit)
{
    return natsConnection_FlushTimeout(m_connection.get(), limit.count());
}

natsStatus NatsSession::send(const std::string &subject, const std::string &replyTo, const char *data, std::size_t size)
{
    if (size > maxPayload())
        return NATS_MAX_PAYLOAD;
    const int length = static_cast<int>(size);
    if (replyTo.empty())
        return natsConnection_Publish(m_connection.get(), subject.c_str(), data, length);
    return natsConnection_PublishRequest(m_connection.get(), subject.c_str(), replyTo.c_str(), data, length);
}

std::size_t NatsSession::maxPayload() const
{
    return static_cast<std::size_t>(natsConnection_GetMaxPayload(m_connection.get()));
}

} // namespace tavro::runtime
