#include "http/connectionqueue.h"

#include "http/wakeups.h"

namespace tavro::assistantservice {

namespace {

thread_local bool refusing = false;

} // namespace

ConnectionQueue::ConnectionQueue(int threads, int waiting, Wakeups &wakeups)
    : m_wakeups(wakeups)
    , m_mostWaiting(static_cast<size_t>(waiting))
{
    for (int i = 0; i < threads; ++i) {
        m_threads.emplace_back([this] { work(); });
    }
}

bool ConnectionQueue::isRefusing()
{
    return refusing;
}

void ConnectionQueue::enqueue(std::function<void()> connection)
{
    if (!takeIn(connection)) {
        refusing = true;
        connection();
        refusing = false;
    }
}

bool ConnectionQueue::takeIn(std::function<void()> &connection)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_stopping || m_waiting.size() >= m_mostWaiting) {
        return false;
    }
    m_waiting.push_back(std::move(connection));
    if (m_waiting.size() > m_freeThreads) {
        m_wakeups.askForThread();
    }
    m_changed.notify_one();
    return true;
}

void ConnectionQueue::shutdown()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    for (std::thread &thread : m_threads) {
        thread.join();
    }
}

void ConnectionQueue::work()
{
    for (std::function<void()> connection; next(connection);) {
        connection();
    }
}

bool ConnectionQueue::next(std::function<void()> &connection)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    ++m_freeThreads;
    m_changed.wait(lock, [this] { return m_stopping || !m_waiting.empty(); });
    --m_freeThreads;
    if (m_waiting.empty()) {
        return false;
    }
    connection = std::move(m_waiting.front());
    m_waiting.pop_front();
    // A thread came free by itself: the connection that was asked to give way may stay.
    if (m_waiting.size() <= m_freeThreads) {
        while (m_wakeups.takeThreadRequest()) { }
    }
    return true;
}

} // namespace tavro::assistantservice
