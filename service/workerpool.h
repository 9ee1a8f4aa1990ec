#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tavro::assistantservice {

/// A fixed number of threads that work off tasks in the order they came. How many may wait is the request store's
/// affair.
class WorkerPool {
public:
    /// A task looks at the flag now and then and gives up once it is set. What it throws is logged.
    using Task = std::function<void(const std::atomic<bool> &cancelled)>;

    /// Throws where the system has no threads left.
    explicit WorkerPool(int threads);
    ~WorkerPool();
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    /// After stop() the task is dropped.
    void post(Task task);
    /// Cancels the running tasks, drops the waiting ones and waits for the threads. A second call does nothing.
    void stop();

private:
    void work();
    bool next(Task &task);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
    std::atomic<bool> m_stopping{false};
    std::vector<std::thread> m_threads;
};

} // namespace tavro::assistantservice
