#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <thread>

namespace tavro::aiassistant {

/// Tasks for a worker thread, which runs them in the order in which they were pushed. Its loop:
///
///     while (std::packaged_task<void()> task = queue.pop(); task.valid()) task();
///
/// All operations may be called from any thread. Tasks that still wait when the queue goes are destroyed, which breaks
/// the promise of their futures.
class TaskQueue {
public:
    TaskQueue() = default;
    TaskQueue(const TaskQueue &) = delete;
    TaskQueue &operator=(const TaskQueue &) = delete;

    /// Appends @p task. Once the queue is closed, the task is destroyed instead.
    void push(std::packaged_task<void()> task);

    /// Waits for a task and takes it. Gives one that is not valid() once the queue is closed.
    std::packaged_task<void()> pop();

    /// Destroys what waits, and lets the worker go.
    void close();

    /// Whether the calling thread is the one that took the last task.
    bool isWorkerThread() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<void()>> m_tasks;
    std::thread::id m_worker;
    bool m_closed = false;
};

} // namespace tavro::aiassistant
