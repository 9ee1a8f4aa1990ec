#pragma once

#include "machine/mailbox.h"
#include "nats/linkevents.h"
#include "nats/pulse.h"

#include <nats/nats.h>

#include <atomic>
#include <memory>
#include <string>

namespace tavro::runtime {

/// Takes what one connection receives to where it belongs. Its operations run on the NATS library's threads, which may
/// still be in them when the connection is gone: so they hold a share of it.
class NatsIncoming {
public:
    enum class Kind { Call, Presence, Inbox };

    NatsIncoming(int session, const Mailbox &mailbox, std::shared_ptr<LinkEvents> events, std::shared_ptr<Pulse> pulse);

    void receive(Kind kind, natsMsg &message);
    void put(LinkEvent::Kind kind, const std::string &text, const std::string &replyTo = {}) const;

private:
    void receiveCall(natsMsg &message, const std::string &subject);
    void receiveInbox(natsMsg &message, const std::string &subject) const;

    const int m_session;
    const Mailbox m_mailbox;
    const std::shared_ptr<LinkEvents> m_events;
    const std::shared_ptr<Pulse> m_pulse; ///< calls that came while it stood still are stale
    std::atomic_bool m_isFull{false}; // of calls and completions, which may come on two threads
};

} // namespace tavro::runtime
