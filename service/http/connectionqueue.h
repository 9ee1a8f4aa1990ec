#pragma once

#include <httplib.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tavro::assistantservice {

class Wakeups;

/// Accepted connections on their way to a thread. At most `waiting` of them wait; one more is run at once on the
/// accepting thread with isRefusing() true, which closes it.
class ConnectionQueue : public httplib::TaskQueue {
public:
    ConnectionQueue(int threads, int waiting, Wakeups &wakeups);

    void enqueue(std::function<void()> connection) override;
    void shutdown() override;

    /// True inside a connection that has to be closed without being served.
    static bool isRefusing();

private:
    void work();
    bool next(std::function<void()> &connection);
    bool takeIn(std::function<void()> &connection);

    Wakeups &m_wakeups;
    const size_t m_mostWaiting;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_waiting;
    size_t m_freeThreads = 0;
    bool m_stopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace tavro::assistantservice
