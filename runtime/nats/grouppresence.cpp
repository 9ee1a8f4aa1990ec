#include "nats/grouppresence.h"

namespace tavro::runtime {

namespace {

constexpr int missedUntilGone = 3;

} // namespace

GroupPresence::GroupPresence(const Self &self, Interval interval, PresenceActions &actions)
    : m_self(self)
    , m_interval(interval)
    , m_actions(actions)
{ }

// Who stood by lets the machine that served come back first: it knows the conversation.
void GroupPresence::opened(Time now)
{
    if (!m_self.mayServe) {
        m_state = State::Watching;
        m_actions.ask(own(PresenceMessage::Kind::Asking));
    } else if (m_other.id.empty()) {
        claim(now);
    } else {
        m_state = State::StandingBy;
        m_nextTick = now + missedUntilGone * m_interval;
        m_actions.ask(own(PresenceMessage::Kind::Asking));
    }
    show();
}

void GroupPresence::leave()
{
    if (m_state == State::Serving)
        m_actions.announce(own(PresenceMessage::Kind::Leaving));
}

void GroupPresence::closed()
{
    m_state = State::Closed;
    m_otherServes = false;
    m_otherGone = false;
    m_nextTick = Time::max();
    show();
}

void GroupPresence::heard(const PresenceMessage &message, const std::string &replyTo, Time now)
{
    switch (message.kind) {
    case PresenceMessage::Kind::Serving:
        return heardServing(message, now);
    case PresenceMessage::Kind::Leaving:
        return heardLeaving(message, now);
    case PresenceMessage::Kind::Claiming:
        return heardClaiming(message, replyTo, now);
    case PresenceMessage::Kind::Asking:
        if (m_state == State::Serving)
            answer(replyTo, PresenceMessage::Kind::Serving);
    }
}

void GroupPresence::heardServing(const PresenceMessage &message, Time now)
{
    if (m_state == State::Serving && m_self.id < message.id)
        return m_actions.announce(own(PresenceMessage::Kind::Serving));
    m_otherServes = true;
    m_otherGone = false;
    if (m_self.mayServe)
        return standBy(message, now);
    m_other = message;
    m_nextTick = now + missedUntilGone * m_interval;
    show();
}

void GroupPresence::heardLeaving(const PresenceMessage &message, Time now)
{
    if (message.id == m_other.id)
        lostServer(now);
}

void GroupPresence::heardClaiming(const PresenceMessage &message, const std::string &replyTo, Time now)
{
    if (m_state == State::Serving) {
        answer(replyTo, PresenceMessage::Kind::Serving);
    } else if (m_state == State::Claiming && message.id < m_self.id) {
        standBy(message, now);
    } else if (m_state == State::Claiming) {
        answer(replyTo, PresenceMessage::Kind::Claiming);
        serve(now);
    }
}

// An answer is not answered.
void GroupPresence::answer(const std::string &replyTo, PresenceMessage::Kind kind)
{
    if (!replyTo.empty())
        m_actions.answer(replyTo, own(kind));
}

void GroupPresence::nobody(Time now)
{
    if (m_state == State::Claiming)
        serve(now);
}

void GroupPresence::tick(Time now)
{
    if (now < m_nextTick)
        return;
    if (m_state == State::Claiming) {
        serve(now);
    } else if (m_state == State::Serving) {
        m_nextTick = now + m_interval;
        m_actions.announce(own(PresenceMessage::Kind::Serving));
    } else {
        lostServer(now);
    }
}

// An asked machine may be one that is gone without the broker knowing yet, so the wait has an end.
void GroupPresence::claim(Time now)
{
    m_state = State::Claiming;
    m_nextTick = now + m_interval;
    m_actions.ask(own(PresenceMessage::Kind::Claiming));
}

void GroupPresence::serve(Time now)
{
    m_state = State::Serving;
    m_other = {};
    m_otherServes = false;
    m_otherGone = false;
    m_nextTick = now + m_interval;
    m_actions.listenToCalls(true);
    m_actions.announce(own(PresenceMessage::Kind::Serving));
    show();
}

void GroupPresence::standBy(const PresenceMessage &message, Time now)
{
    if (m_state == State::Serving)
        m_actions.listenToCalls(false);
    m_state = State::StandingBy;
    m_other = message;
    m_nextTick = now + missedUntilGone * m_interval;
    show();
}

void GroupPresence::lostServer(Time now)
{
    m_other = {};
    m_otherGone = m_otherServes;
    m_otherServes = false;
    m_nextTick = Time::max();
    if (m_state == State::StandingBy)
        claim(now);
    show();
}

void GroupPresence::show()
{
    Presence presence;
    presence.serving = m_state == State::Serving;
    presence.serverPresent = presence.serving || m_otherServes;
    presence.serverGone = m_otherGone;
    if (m_state == State::StandingBy)
        presence.anotherServer = m_other.name;
    m_actions.show(presence);
}

} // namespace tavro::runtime
