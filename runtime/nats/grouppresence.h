#pragma once

#include "machine/machineruntime_p.h"
#include "nats/presencemessage.h"

#include <chrono>
#include <string>

namespace tavro::runtime {

/// What GroupPresence wants done on the connection.
class PresenceActions {
public:
    virtual ~PresenceActions() = default;
    virtual void announce(const PresenceMessage &message) = 0; ///< to all machines
    virtual void ask(const PresenceMessage &message) = 0; ///< to those that may serve; they answer, or nobody() follows
    virtual void answer(const std::string &to, const PresenceMessage &message) = 0;
    virtual void listenToCalls(bool listen) = 0;
    virtual void show(const Presence &presence) = 0;
};

/// Who serves the group: decides whether this machine does, and watches the one that does. Knows no connection and no
/// clock, and is used by one thread.
///
/// A machine that may serve asks first. One that serves says so, and the asking one stands by; where nobody takes the
/// question, it serves. Of two that ask at once, or that both serve after a broker was torn in two, the one with the
/// lower id serves. A serving machine that is not heard for three intervals is gone, and who stands by asks again.
class GroupPresence {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Interval = std::chrono::milliseconds;

    struct Self {
        bool mayServe = false;
        std::string id;
        std::string name;
    };

    GroupPresence(const Self &self, Interval interval, PresenceActions &actions);

    void opened(Time now); ///< connected, and everything listens
    void leave(); ///< about to close on purpose
    void closed();

    /// @p replyTo: where an answer goes; empty for announcements and answers.
    void heard(const PresenceMessage &message, const std::string &replyTo, Time now);
    void nobody(Time now); ///< no machine took the question
    void tick(Time now);
    Time nextTick() const { return m_nextTick; }

private:
    enum class State { Closed, Watching, Claiming, Serving, StandingBy };

    void claim(Time now);
    void serve(Time now);
    void standBy(const PresenceMessage &message, Time now);
    void heardServing(const PresenceMessage &message, Time now);
    void heardLeaving(const PresenceMessage &message, Time now);
    void heardClaiming(const PresenceMessage &message, const std::string &replyTo, Time now);
    void answer(const std::string &replyTo, PresenceMessage::Kind kind);
    void lostServer(Time now);
    void show();
    PresenceMessage own(PresenceMessage::Kind kind) const { return {kind, m_self.id, m_self.name}; }

    const Self m_self;
    const Interval m_interval;
    PresenceActions &m_actions;
    State m_state = State::Closed;
    PresenceMessage m_other; ///< the last that served, or that had the better claim
    bool m_otherServes = false;
    bool m_otherGone = false; ///< it served since the connection stands, and nobody does now
    Time m_nextTick = Time::max();
};

} // namespace tavro::runtime
