#pragma once

#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace tavro::assistantservice {

/// Ends connections whose time is over or whose client has gone and, where connections are short, those that hold
/// theirs for nothing. The HTTP library by itself ends only silent ones, and overlooks an end that comes together with
/// bytes.
///
/// All functions may be called from any thread.
class ConnectionWatch {
public:
    struct Limits {
        /// For a request to arrive, and again for its reply to be taken, plus what their sizes need at the least speed.
        std::chrono::milliseconds request{30000};
        /// For an idle connection, with the head of its next request.
        std::chrono::milliseconds idle{75000};
        /// Of more connections than these, those that wait for a request or are slow to send it give way. Not 0.
        size_t many = 1024;
    };

    /// What a connection is doing.
    enum class Phase {
        New, ///< before the head of its first request
        Idle, ///< between two requests, also while the head of the next one comes
        Receiving, ///< its body comes
        Working, ///< the service owes the reply
        Replying,
    };

    using Id = quint64;

    explicit ConnectionWatch(const Limits &limits);
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch &) = delete;
    ConnectionWatch &operator=(const ConnectionWatch &) = delete;

    /// The descriptor stays its owner's and must be open until remove().
    Id add(int descriptor);
    void remove(Id id);
    /// Starts the time of that phase.
    void enter(Id id, Phase phase);
    /// Gives a connection what so many bytes need.
    void countBytes(Id id, size_t size);

    /// Ends what waits for a request, and gives the others one second.
    void stop();
    /// False where there are still connections after that time.
    bool waitUntilNone(std::chrono::milliseconds limit);

private:
    using Clock = std::chrono::steady_clock;

    struct Connection {
        int descriptor = -1;
        Phase phase = Phase::New;
        Clock::time_point since;
        Clock::time_point deadline;
        /// The client's end was seen at the last look.
        bool hungUp = false;
        bool ended = false;
    };

    void watch();
    void endOverdue(Clock::time_point now);
    static bool isLeft(Connection &connection);
    void shrink(size_t most, Clock::time_point now);
    Connection *nextToGiveWay(Clock::time_point now);
    Clock::time_point deadlineOf(Phase phase, Clock::time_point now) const;
    static bool waitsForRequest(const Connection &connection);
    static bool mayGiveWay(const Connection &connection, Clock::time_point now);
    static bool givesWayBefore(const Connection &one, const Connection &other);
    static void end(Connection &connection);

    const Limits m_limits;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::condition_variable m_none;
    std::unordered_map<Id, Connection> m_connections;
    Id m_lastId = 0;
    bool m_stopping = false;
    bool m_over = false;
    std::thread m_thread;
};

} // namespace tavro::assistantservice
