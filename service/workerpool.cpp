#include "workerpool.h"

#include "servicelog.h"

#include <exception>

namespace tavro::assistantservice {

// Threads that wait for tasks must end before what they wait for goes.
WorkerPool::WorkerPool(int threads)
{
    try {
        for (int i = 0; i < threads; ++i) {
            m_threads.emplace_back([this] { work(); });
        }
    } catch (...) {
        stop();
        throw;
    }
}

WorkerPool::~WorkerPool()
{
    stop();
}

void WorkerPool::post(Task task)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stopping) {
            return;
        }
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_one();
}

void WorkerPool::stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
        m_tasks.clear();
    }
    m_changed.notify_all();
    for (std::thread &thread : m_threads) {
        thread.join();
    }
    m_threads.clear();
}

// A task goes as soon as it is done: what it holds may be large.
void WorkerPool::work()
{
    for (;;) {
        Task task;
        if (!next(task)) {
            return;
        }
        try {
            task(m_stopping);
        } catch (const std::exception &error) {
            serviceLog().error("event=task-failed text=\"{}\"", error.what());
        }
    }
}

bool WorkerPool::next(Task &task)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_stopping || !m_tasks.empty(); });
    if (m_stopping) {
        return false;
    }
    task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return true;
}

} // namespace tavro::assistantservice
