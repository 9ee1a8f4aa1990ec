#include "nats/natssession.h"

#include "nats/connectguard.h"
#include "nats/connectionoptions.h"
#include "nats/connectturn.h"

#include <utility>

namespace tavro::runtime {

namespace {

using Incoming = std::shared_ptr<NatsIncoming>;

const QString doesNotAnswer = QStringLiteral("it does not answer");

// What the library says, without the place in its source.
QString reasonOf(const char *lastError)
{
    const QString text = QString::fromUtf8(lastError);
    const int placeEnd = text.startsWith(QLatin1Char('(')) ? text.indexOf(QLatin1String("): ")) : -1;
    return placeEnd < 0 ? text : text.mid(placeEnd + 3);
}

// The closure of a connection goes with its last callback, that of a subscription with its thread.
void onClosed(natsConnection *connection, void *closure)
{
    const std::unique_ptr<Incoming> incoming(static_cast<Incoming *>(closure));
    const char *text = nullptr;
    natsConnection_GetLastError(connection, &text);
    (*incoming)->put(LinkEvent::Kind::Closed, text ? text : "");
}

// The thread's last error is the one that is told of; the connection's may be a later one already.
void onTrouble(natsConnection * /*connection*/, natsSubscription * /*subscription*/, natsStatus status, void *closure)
{
    natsStatus lastStatus = NATS_OK;
    const QString told = reasonOf(nats_GetLastError(&lastStatus));
    const bool isThis = lastStatus == status && !told.isEmpty();
    (*static_cast<Incoming *>(closure))
        ->put(LinkEvent::Kind::Trouble, isThis ? told.toStdString() : natsStatus_GetText(status));
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

NatsSession::Opened unreachable(const QString &server, const QString &why)
{
    return failure(false, QStringLiteral("%1 cannot be reached: %2").arg(withoutCredentials(server), why));
}

// How the library puts it that the other side was gone before all was said.
bool hasBrokenOff(const QString &lastError)
{
    return lastError.startsWith(QLatin1String("Expected 'PONG'")) || lastError.contains(QLatin1String("unexpected eof"))
        || lastError.endsWith(QLatin1String("(null)"));
}

// Why the library could not make a connection, where it is nobody's certificate or credential.
QString hindranceOf(natsStatus status, const QString &lastError)
{
    if (status == NATS_NO_SERVER)
        return QStringLiteral("nobody answers there");
    if (status == NATS_TIMEOUT)
        return doesNotAnswer;
    if (status == NATS_CONNECTION_CLOSED || hasBrokenOff(lastError))
        return QStringLiteral("it ended the connection at once");
    // What else the library says may hold the address as it is.
    const bool isBrokersWord = status == NATS_ERR || status == NATS_PROTOCOL_ERROR;
    return isBrokersWord ? lastError.simplified() : QLatin1String(natsStatus_GetText(status));
}

NatsSession::Opened failureOf(natsStatus status, const QString &server)
{
    const QString shown = withoutCredentials(server);
    const QString lastError = reasonOf(nats_GetLastError(nullptr));
    switch (status) {
    case NATS_CONNECTION_AUTH_FAILED:
        return failure(true, QStringLiteral("%1 refuses this machine: wrong or missing credentials").arg(shown));
    case NATS_SSL_ERROR:
        if (hasBrokenOff(lastError))
            return unreachable(server, hindranceOf(status, lastError));
        return failure(true, QStringLiteral("%1 is not trusted: %2").arg(shown, lastError));
    case NATS_SECURE_CONNECTION_WANTED:
        return failure(true, QStringLiteral("%1 offers no TLS, which this machine insists on").arg(shown));
    case NATS_SECURE_CONNECTION_REQUIRED:
        return failure(true, QStringLiteral("%1 insists on TLS").arg(shown));
    default:
        return unreachable(server, hindranceOf(status, lastError));
    }
}

} // namespace

NatsSession::Opened NatsSession::open(const NatsOptions &options, const QString &server, Incoming incoming,
                                      const std::atomic_bool &isHurried)
{
    const BrokerAddress broker(server);
    if (!broker.isKnown())
        return unreachable(server, broker.problem());
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
    const ConnectTurn turn(isHurried);
    if (!turn.isHeld())
        return unreachable(server, QStringLiteral("the attempt was given up"));
    ConnectGuard guard(broker, options.connectTimeout, isHurried);
    status = natsConnection_Connect(&connection, raw);
    if (status != NATS_OK)
        return guard.hasStruck() ? unreachable(server, doesNotAnswer) : failureOf(status, server);
    static_cast<void>(closure.release()); // now the last callback's
    return {std::shared_ptr<NatsSession>(new NatsSession(NatsPointer<natsConnection>(connection), std::move(incoming))),
            false,
            {}};
}

NatsSession::NatsSession(NatsPointer<natsConnection> connection, Incoming incoming)
    : m_connection(std::move(connection))
    , m_incoming(std::move(incoming))
{ }

// The library (3.4) may still be about to put a message into a subscription that is destroyed meanwhile. So each is
// kept until nothing is received any more.
NatsSession::~NatsSession()
{
    natsConnection_Close(m_connection.get());
}

natsStatus NatsSession::listen(NatsIncoming::Kind kind, const std::string &subject)
{
    return subscribe(kind, subject, m_subscriptions.emplace_back());
}

natsStatus NatsSession::listenToCalls(const std::string &subject)
{
    if (m_calls) {
        natsSubscription_Unsubscribe(m_calls.get());
        m_subscriptions.push_back(std::move(m_calls));
    }
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
