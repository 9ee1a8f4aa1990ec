#pragma once

#include "protocol/taskqueue.h"

#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace tavro::testsupport {

/// A thread that runs a task queue.
class Worker {
public:
    Worker()
        : m_queue(std::make_shared<aiassistant::TaskQueue>())
        , m_thread([queue = m_queue.get()] {
            for (auto task = queue->pop(); task.valid(); task = queue->pop())
                task();
        })
    { }

    ~Worker() { end(); }

    const std::shared_ptr<aiassistant::TaskQueue> &queue() const { return m_queue; }

    /// Runs @p act on the thread and gives what it gives.
    template <typename Act>
    auto run(Act act)
    {
        using Result = decltype(act());
        std::promise<Result> promise;
        std::future<Result> result = promise.get_future();
        m_queue->push(std::packaged_task<void()>([&] { promise.set_value(act()); }));
        return result.get();
    }

    void end()
    {
        m_queue->close();
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    std::shared_ptr<aiassistant::TaskQueue> m_queue;
    std::thread m_thread;
};

} // namespace tavro::testsupport
