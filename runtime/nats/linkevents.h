#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

namespace tavro::runtime {

/// What the thread of a NatsLink has to look at.
struct LinkEvent {
    enum class Kind {
        Presence, ///< text: a PresenceMessage; replyTo: where an answer goes
        Nobody, ///< no machine took this machine's question
        Untaken, ///< text: the name of a call that no machine took
        Trouble, ///< text: what the broker complains of
        Closed, ///< text: why the connection ended
        Stop,
    };

    Kind kind = Kind::Stop;
    int session = 0; ///< the connection that it comes from; 0: none
    std::string text;
    std::string replyTo;
};

/// Events on their way to the thread of a NatsLink. May be used from any thread.
class LinkEvents {
public:
    using Time = std::chrono::steady_clock::time_point;

    void put(LinkEvent event);
    std::optional<LinkEvent> takeUntil(Time end); ///< nothing where none came until @p end

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<LinkEvent> m_events;
};

} // namespace tavro::runtime
