#include "nats/natsincoming.h"

#include "nats/subjects.h"

#include <utility>

namespace tavro::runtime {

namespace {

std::string payloadOf(natsMsg &message)
{
    return {natsMsg_GetData(&message), static_cast<std::size_t>(natsMsg_GetDataLength(&message))};
}

std::string replyOf(natsMsg &message)
{
    const char *const reply = natsMsg_GetReply(&message);
    return reply ? reply : "";
}

} // namespace

NatsIncoming::NatsIncoming(int session, const Mailbox &mailbox, std::shared_ptr<LinkEvents> events,
                           std::shared_ptr<Pulse> pulse)
    : m_session(session)
    , m_mailbox(mailbox)
    , m_events(std::move(events))
    , m_pulse(std::move(pulse))
{ }

void NatsIncoming::receive(Kind kind, natsMsg &message)
{
    const std::string subject = natsMsg_GetSubject(&message);
    if (kind == Kind::Call)
        receiveCall(message, subject);
    else if (kind == Kind::Presence)
        put(LinkEvent::Kind::Presence, payloadOf(message), replyOf(message));
    else
        receiveInbox(message, subject);
}

// A flood is told once.
void NatsIncoming::receiveCall(natsMsg &message, const std::string &subject)
{
    if (!m_pulse->isAlive(LinkEvents::Time::clock::now()))
        return;
    const auto call = std::make_shared<const Message>(Message{Subjects::lastPart(subject), payloadOf(message)});
    const bool isTaken = m_mailbox.put(call);
    if (!isTaken && !m_isFull)
        put(LinkEvent::Kind::Trouble, "messages that arrive are dropped, too many wait");
    m_isFull = !isTaken;
}

void NatsIncoming::receiveInbox(natsMsg &message, const std::string &subject) const
{
    const std::string name = Subjects::lastPart(subject);
    const bool isAnswer = name == Subjects::answerName;
    if (!natsMsg_IsNoResponders(&message)) {
        if (isAnswer)
            put(LinkEvent::Kind::Presence, payloadOf(message));
    } else if (isAnswer) {
        put(LinkEvent::Kind::Nobody, {});
    } else {
        put(LinkEvent::Kind::Untaken, name);
    }
}

void NatsIncoming::put(LinkEvent::Kind kind, const std::string &text, const std::string &replyTo) const
{
    m_events->put({kind, m_session, text, replyTo});
}

} // namespace tavro::runtime
