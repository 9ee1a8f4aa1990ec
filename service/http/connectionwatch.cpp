#include "http/connectionwatch.h"

#include <algorithm>
#include <sys/socket.h>
#include <utility>

namespace tavro::assistantservice {

namespace {

using std::chrono::milliseconds;

constexpr size_t leastBytesPerMillisecond = 64;
constexpr milliseconds graceWhenStopping{1000};
constexpr milliseconds lookInterval{200};
// Who has just connected is about to ask, as a rule, and a body comes without a break.
constexpr milliseconds newcomersTime{250};
constexpr milliseconds bodysTime{2000};

} // namespace

ConnectionWatch::ConnectionWatch(const Limits &limits)
    : m_limits(limits)
    , m_thread([this] { watch(); })
{ }

ConnectionWatch::~ConnectionWatch()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_over = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

ConnectionWatch::Id ConnectionWatch::add(int descriptor)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const Clock::time_point now = Clock::now();
    shrink(m_limits.many - 1, now);
    Connection connection;
    connection.descriptor = descriptor;
    connection.since = now;
    connection.deadline = deadlineOf(Phase::New, now);
    if (m_stopping) {
        end(connection);
    }
    m_connections.emplace(++m_lastId, connection);
    if (m_connections.size() == 1) {
        m_changed.notify_all();
    }
    return m_lastId;
}

void ConnectionWatch::remove(Id id)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_connections.erase(id);
    if (m_connections.empty()) {
        m_none.notify_all();
    }
}

void ConnectionWatch::enter(Id id, Phase phase)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_connections.find(id);
    if (found == m_connections.end()) {
        return;
    }
    found->second.phase = phase;
    found->second.hungUp = false;
    found->second.since = Clock::now();
    found->second.deadline = deadlineOf(phase, found->second.since);
    if (m_stopping && waitsForRequest(found->second)) {
        end(found->second);
    }
}

void ConnectionWatch::countBytes(Id id, size_t size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_connections.find(id);
    if (found != m_connections.end() && found->second.phase != Phase::Working && !m_stopping) {
        found->second.deadline += std::chrono::microseconds(size * 1000 / leastBytesPerMillisecond);
    }
}

void ConnectionWatch::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopping = true;
    const Clock::time_point last = Clock::now() + graceWhenStopping;
    for (auto &[id, connection] : m_connections) {
        connection.deadline = std::min(connection.deadline, last);
        if (waitsForRequest(connection)) {
            end(connection);
        }
    }
}

bool ConnectionWatch::waitUntilNone(milliseconds limit)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_none.wait_for(lock, limit, [this] { return m_connections.empty(); });
}

void ConnectionWatch::watch()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_over) {
        m_changed.wait(lock, [this] { return m_over || !m_connections.empty(); });
        m_changed.wait_for(lock, lookInterval, [this] { return m_over; });
        endOverdue(Clock::now());
        // A crowd that came at once was spared when it came.
        shrink(m_limits.many, Clock::now());
    }
}

void ConnectionWatch::endOverdue(Clock::time_point now)
{
    for (auto &[id, connection] : m_connections) {
        if (connection.deadline <= now || isLeft(connection)) {
            end(connection);
        }
    }
}

// A client that has sent all of its request may hang up and still take the reply. So it counts as gone only where it
// owes something, and has been found so twice: the library may just be reading its last bytes.
bool ConnectionWatch::isLeft(Connection &connection)
{
    char byte = 0;
    const bool owes = waitsForRequest(connection) || connection.phase == Phase::Receiving;
    const bool hungUp =
        owes && !connection.ended && ::recv(connection.descriptor, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
    return std::exchange(connection.hungUp, hungUp) && hungUp;
}

void ConnectionWatch::shrink(size_t most, Clock::time_point now)
{
    const auto live = static_cast<size_t>(std::count_if(m_connections.begin(), m_connections.end(),
                                                        [](const auto &entry) { return !entry.second.ended; }));
    for (size_t count = live; count > most; --count) {
        Connection *const chosen = nextToGiveWay(now);
        if (chosen == nullptr) {
            return;
        }
        end(*chosen);
    }
}

// The one that has waited longest; where none waits, the one whose body takes longest.
ConnectionWatch::Connection *ConnectionWatch::nextToGiveWay(Clock::time_point now)
{
    Connection *chosen = nullptr;
    for (auto &[id, connection] : m_connections) {
        if (mayGiveWay(connection, now) && (chosen == nullptr || givesWayBefore(connection, *chosen))) {
            chosen = &connection;
        }
    }
    return chosen;
}

bool ConnectionWatch::mayGiveWay(const Connection &connection, Clock::time_point now)
{
    const auto waited = now - connection.since;
    return !connection.ended
        && (waitsForRequest(connection) ? waited >= newcomersTime
                                        : connection.phase == Phase::Receiving && waited >= bodysTime);
}

bool ConnectionWatch::givesWayBefore(const Connection &one, const Connection &other)
{
    return waitsForRequest(one) == waitsForRequest(other) ? one.since < other.since : waitsForRequest(one);
}

// While the service works the client owes nothing.
ConnectionWatch::Clock::time_point ConnectionWatch::deadlineOf(Phase phase, Clock::time_point now) const
{
    if (phase == Phase::Working) {
        return Clock::time_point::max();
    }
    return now + (m_stopping ? graceWhenStopping : phase == Phase::Idle ? m_limits.idle : m_limits.request);
}

bool ConnectionWatch::waitsForRequest(const Connection &connection)
{
    return connection.phase == Phase::New || connection.phase == Phase::Idle;
}

void ConnectionWatch::end(Connection &connection)
{
    if (!connection.ended) {
        connection.ended = true;
        ::shutdown(connection.descriptor, SHUT_RDWR);
    }
}

} // namespace tavro::assistantservice
