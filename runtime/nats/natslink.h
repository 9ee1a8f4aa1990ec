#pragma once

#include "machine/machineruntime.h"
#include "nats/grouppresence.h"
#include "nats/natsoptions.h"
#include "nats/natssession.h"
#include "nats/pulse.h"
#include "nats/retrywait.h"
#include "nats/subjects.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

namespace tavro::runtime {

/// What a NatsLink tells its owner. The functions are called on any thread, but not after the link is destroyed.
struct LinkReports {
    std::function<void(MachineRuntime::Connection, const std::string &text)> connection;
    std::function<void(const Presence &)> presence;
    std::function<void(const std::string &name, const std::string &reason)> lost;
};

/// A machine's way to its group: a thread that connects, again and again, and sees to who serves.
class NatsLink : private PresenceActions {
public:
    NatsLink(Roles roles, const NatsOptions &options, const Mailbox &mailbox, LinkReports reports);
    ~NatsLink() override;

    NatsLink(const NatsLink &) = delete;
    NatsLink &operator=(const NatsLink &) = delete;

    /// May be called from any thread; what goes wrong is reported as lost.
    void sendCall(const std::string &name, const char *data, std::size_t size);
    void sendCompletion(const std::string &name, const char *data, std::size_t size);

private:
    void run();
    void tryAllServers();
    NatsSession::Opened tryServer(const QString &server);
    natsStatus listen(NatsSession &session);
    void enter(const std::shared_ptr<NatsSession> &session, const QString &server);
    void leave(const std::string &why);
    void handleUntil(GroupPresence::Time end);
    void handle(const LinkEvent &event, GroupPresence::Time now);
    void handleUntaken(const std::string &name);
    void handleTrouble(const std::string &text);
    void handlePresence(const LinkEvent &event, GroupPresence::Time now);
    std::shared_ptr<NatsSession> session() const;
    Presence presence() const;
    void send(const std::string &name, const std::string &subject, const std::string &replyTo, const char *data,
              std::size_t size);
    void sendPresence(const std::string &subject, const std::string &replyTo, const PresenceMessage &message);

    void announce(const PresenceMessage &message) override;
    void ask(const PresenceMessage &message) override;
    void answer(const std::string &to, const PresenceMessage &message) override;
    void listenToCalls(bool listen) override;
    void show(const Presence &presence) override;

    const Roles m_roles;
    const NatsOptions m_options;
    const Mailbox m_mailbox;
    const LinkReports m_reports;
    const std::string m_id;
    const Subjects m_subjects;
    const std::shared_ptr<LinkEvents> m_events = std::make_shared<LinkEvents>();

    mutable std::mutex m_mutex; // guards the next two, which the link's thread alone writes
    std::shared_ptr<NatsSession> m_session;
    Presence m_presence;

    GroupPresence m_group; // from here on of the link's thread alone
    RetryWait m_retryWait;
    std::string m_shownServer;
    std::set<std::string> m_troubles; ///< told since the connection stands
    GroupPresence::Time m_enteredAt;
    std::shared_ptr<Pulse> m_pulse; ///< of the connection
    int m_sessionNumber = 0;
    bool m_stopping = false;

    std::atomic_bool m_isLeaving{false}; // of all threads

    std::thread m_thread;
};

} // namespace tavro::runtime
