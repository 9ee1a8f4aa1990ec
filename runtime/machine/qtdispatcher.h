#pragma once

#include "zvruntime/izvruntime.h"

#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace tavro::runtime {

/// Tasks on their way to a QtDispatcher. A thread that may outlive the dispatcher holds the queue instead: once the
/// dispatcher is gone, what is put is destroyed at once. All members may be called from any thread.
class TaskLine {
public:
    explicit TaskLine(QObject *receiver);

    void put(std::function<void()> task);
    void woken(); ///< the receiver has its event and is about to take
    std::function<void()> take(); ///< the task that has waited longest; empty where none waits
    void close(); ///< destroys what waits, and from now on what is put

private:
    void wake();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_tasks;
    QObject *m_receiver;
    bool m_isWaking = false;
};

/// Runs tasks, in the order in which they were posted, in the event loop of the thread in which it lives, also in one
/// that runs inside a task. Tasks that wait when it goes are destroyed.
class QtDispatcher : public QObject, public IZVDispatcher {
    Q_OBJECT

public:
    explicit QtDispatcher(QObject *parent = nullptr);
    ~QtDispatcher() override;

    /// May be called from any thread while the dispatcher lives. A task may destroy the dispatcher.
    void post(std::function<void()> task) override;

    /// Whether the calling thread is the one that runs the tasks.
    bool isOwnThread() const;

    const std::shared_ptr<TaskLine> &line() const { return m_line; }

protected:
    bool event(QEvent *event) override;

private:
    const std::shared_ptr<TaskLine> m_line;
};

} // namespace tavro::runtime
