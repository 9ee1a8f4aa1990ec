#include "nats/natslink.h"

#include "machine/lossreasons.h"

#include <QSysInfo>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace tavro::runtime {

namespace {

using Connection = MachineRuntime::Connection;
using Clock = std::chrono::steady_clock;

constexpr int longestName = 64;
// The last word to the broker is worth a little waiting.
constexpr std::chrono::milliseconds farewell{500};
// A connection that did not last so long does not make the waits short again.
constexpr std::chrono::seconds worthHaving{1};
constexpr char namelessMachine[] = "a machine without a name";

std::string newId()
{
    return QUuid::createUuid().toString(QUuid::Id128).toStdString();
}

std::string nameOf(const NatsOptions &options)
{
    const QString name = options.machine.isEmpty() ? QSysInfo::machineHostName() : options.machine;
    const std::string shown = PresenceMessage::printable(name.left(longestName).toStdString());
    return shown.empty() ? namelessMachine : shown;
}

std::string shown(const QString &server)
{
    return withoutCredentials(server).toStdString();
}

} // namespace

NatsLink::NatsLink(Roles roles, const NatsOptions &options, const Mailbox &mailbox, LinkReports reports)
    : m_roles(roles)
    , m_options(options)
    , m_mailbox(mailbox)
    , m_reports(std::move(reports))
    , m_id(newId())
    , m_subjects(options, m_id)
    , m_group({roles.testFlag(Role::ProxyServer), m_id, nameOf(options)}, options.presenceInterval, *this)
    , m_retryWait(options.firstRetry, options.longestRetry)
    , m_thread([this] { run(); })
{ }

NatsLink::~NatsLink()
{
    m_isLeaving = true;
    m_events->put({});
    m_thread.join();
}

void NatsLink::run()
{
    m_reports.connection(Connection::Connecting, "Connecting to " + shown(m_options.servers.constFirst()));
    while (!m_stopping) {
        tryAllServers();
        while (session() && !m_stopping)
            handleUntil(m_group.nextTick());
        const auto end = Clock::now() + m_retryWait.next();
        while (!m_stopping && Clock::now() < end)
            handleUntil(end);
    }
    m_group.leave();
    if (const auto last = session())
        last->flush(farewell);
}

// A server that refuses says more than one that cannot be reached.
void NatsLink::tryAllServers()
{
    NatsSession::Opened worst;
    for (const QString &server : m_options.servers) {
        handleUntil(Clock::now());
        if (m_stopping)
            return;
        const NatsSession::Opened opened = tryServer(server);
        if (opened.session)
            return enter(opened.session, server);
        if (opened.isRefused || !worst.isRefused)
            worst = opened;
    }
    m_reports.connection(worst.isRefused ? Connection::Refused : Connection::Disconnected, worst.text);
}

NatsSession::Opened NatsLink::tryServer(const QString &server)
{
    m_pulse = std::make_shared<Pulse>(std::max(m_options.longestStandstill, 2 * m_options.presenceInterval));
    const auto incoming = std::make_shared<NatsIncoming>(++m_sessionNumber, m_mailbox, m_events, m_pulse);
    NatsSession::Opened opened = NatsSession::open(m_options, server, incoming, m_isLeaving);
    if (!opened.session || listen(*opened.session) == NATS_OK)
        return opened;
    return {nullptr, false, shown(server) + " was lost at once"};
}

natsStatus NatsLink::listen(NatsSession &session)
{
    natsStatus status = session.listen(NatsIncoming::Kind::Inbox, m_subjects.inbox());
    if (status == NATS_OK)
        status = session.listen(NatsIncoming::Kind::Presence, m_subjects.presence());
    if (status == NATS_OK && m_roles.testFlag(Role::ProxyServer))
        status = session.listen(NatsIncoming::Kind::Presence, m_subjects.question());
    if (status == NATS_OK && m_roles.testFlag(Role::ProxyClient))
        status = session.listen(NatsIncoming::Kind::Call, m_subjects.completion("*"));
    return status == NATS_OK ? session.flush(m_options.connectTimeout) : status;
}

void NatsLink::enter(const std::shared_ptr<NatsSession> &session, const QString &server)
{
    {
        const std::lock_guard lock(m_mutex);
        m_session = session;
    }
    m_enteredAt = Clock::now();
    m_troubles.clear();
    m_shownServer = shown(server);
    m_reports.connection(Connection::Connected, "Connected to " + m_shownServer);
    m_group.opened(Clock::now());
}

void NatsLink::leave(const std::string &why)
{
    if (Clock::now() - m_enteredAt >= worthHaving)
        m_retryWait.reset();
    std::shared_ptr<NatsSession> gone; // closed outside of the lock
    {
        const std::lock_guard lock(m_mutex);
        gone.swap(m_session);
    }
    m_group.closed();
    m_reports.connection(Connection::Disconnected, "The connection to " + m_shownServer + " was lost" + why);
}

void NatsLink::handleUntil(GroupPresence::Time end)
{
    const std::optional<LinkEvent> event = m_events->takeUntil(end);
    if (event)
        handle(*event, Clock::now());
    if (!session() || m_stopping)
        return;
    if (m_pulse->beat(Clock::now()))
        m_group.tick(Clock::now());
    else
        leave(": this machine stood still, and the others took it for gone");
}

void NatsLink::handle(const LinkEvent &event, GroupPresence::Time now)
{
    if (event.kind == LinkEvent::Kind::Stop) {
        m_stopping = true;
        return;
    }
    if (event.session != m_sessionNumber || !session())
        return; // of an earlier connection
    switch (event.kind) {
    case LinkEvent::Kind::Presence:
        return handlePresence(event, now);
    case LinkEvent::Kind::Nobody:
        return m_group.nobody(now);
    case LinkEvent::Kind::Untaken:
        return handleUntaken(event.text);
    case LinkEvent::Kind::Trouble:
        return handleTrouble(event.text);
    default:
        return leave(event.text.empty() ? event.text : ": " + event.text);
    }
}

// A serving machine's own calls are not for others.
void NatsLink::handleUntaken(const std::string &name)
{
    if (!m_presence.serving)
        m_reports.lost(name, LossReason::noServer());
}

// What concerns no message, such as a forbidden presence, comes again and again.
void NatsLink::handleTrouble(const std::string &text)
{
    const std::string name = m_subjects.messageNamedIn(text);
    if (!name.empty() || m_troubles.insert(text).second)
        m_reports.lost(name, text);
}

void NatsLink::handlePresence(const LinkEvent &event, GroupPresence::Time now)
{
    if (const auto message = PresenceMessage::fromText(event.text))
        m_group.heard(*message, event.replyTo, now);
}

std::shared_ptr<NatsSession> NatsLink::session() const
{
    const std::lock_guard lock(m_mutex);
    return m_session;
}

Presence NatsLink::presence() const
{
    const std::lock_guard lock(m_mutex);
    return m_presence;
}

// A serving machine that fell silent may only stand still: the broker would keep the call for it, and it would carry it
// out long after the operator gave it up.
void NatsLink::sendCall(const std::string &name, const char *data, std::size_t size)
{
    if (presence().serverGone)
        return m_reports.lost(name, LossReason::noServer());
    send(name, m_subjects.call(name), m_subjects.untakenCall(name), data, size);
}

void NatsLink::sendCompletion(const std::string &name, const char *data, std::size_t size)
{
    const std::string servingMachine = presence().anotherServer;
    if (!servingMachine.empty())
        return m_reports.lost(name, LossReason::standingBy(servingMachine));
    send(name, m_subjects.completion(name), {}, data, size);
}

void NatsLink::send(const std::string &name, const std::string &subject, const std::string &replyTo, const char *data,
                    std::size_t size)
{
    if (!Subjects::isPart(name))
        return m_reports.lost(name, LossReason::badName());
    const std::shared_ptr<NatsSession> current = session();
    const natsStatus status = current ? current->send(subject, replyTo, data, size) : NATS_CONNECTION_CLOSED;
    if (status == NATS_OK)
        return;
    if (status == NATS_MAX_PAYLOAD)
        return m_reports.lost(name, LossReason::tooLarge(size, current->maxPayload()));
    m_reports.lost(name, LossReason::notConnected());
}

void NatsLink::sendPresence(const std::string &subject, const std::string &replyTo, const PresenceMessage &message)
{
    const std::string text = message.toText();
    if (const auto current = session())
        current->send(subject, replyTo, text.data(), text.size());
}

void NatsLink::announce(const PresenceMessage &message)
{
    sendPresence(m_subjects.presence(), {}, message);
}

void NatsLink::ask(const PresenceMessage &message)
{
    sendPresence(m_subjects.question(), m_subjects.answer(), message);
}

void NatsLink::answer(const std::string &to, const PresenceMessage &message)
{
    sendPresence(to, {}, message);
}

void NatsLink::listenToCalls(bool listen)
{
    if (listen)
        m_pulse->start(Clock::now());
    else
        m_pulse->stop();
    const auto current = session();
    current->listenToCalls(listen ? m_subjects.call("*") : std::string());
    current->flush(m_options.connectTimeout);
}

void NatsLink::show(const Presence &presence)
{
    {
        const std::lock_guard lock(m_mutex);
        m_presence = presence;
    }
    m_reports.presence(presence);
}

} // namespace tavro::runtime
