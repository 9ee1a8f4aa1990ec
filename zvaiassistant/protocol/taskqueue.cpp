#include "protocol/taskqueue.h"

#include <utility>

namespace tavro::aiassistant {

void TaskQueue::push(std::packaged_task<void()> task)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return;
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_one();
}

std::packaged_task<void()> TaskQueue::pop()
{
    std::unique_lock lock(m_mutex);
    m_worker = std::this_thread::get_id();
    m_changed.wait(lock, [this] { return m_closed || !m_tasks.empty(); });
    if (m_tasks.empty())
        return {};
    std::packaged_task<void()> task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

void TaskQueue::close()
{
    std::deque<std::packaged_task<void()>> dropped; // cppcheck-suppress variableScope ; goes after the lock
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        dropped.swap(m_tasks);
    }
    m_changed.notify_all();
}

bool TaskQueue::isWorkerThread() const
{
    const std::lock_guard lock(m_mutex);
    return m_worker == std::this_thread::get_id();
}

} // namespace tavro::aiassistant
