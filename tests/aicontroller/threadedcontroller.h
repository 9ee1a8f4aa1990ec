#pragma once

#include "aicontroller/aicontroller_p.h"

#include <QThread>

#include <future>
#include <thread>

/// A controller that lives in a thread of its own and is destroyed there.
class ThreadedController {
public:
    /// The controller is made in the calling thread; moveAway() sends it to its own one.
    ThreadedController()
        : m_controller(new tavro::aiassistant::AiController)
    {
        m_thread.setObjectName(QStringLiteral("controller"));
    }
    ~ThreadedController()
    {
        if (!m_thread.isRunning())
            delete m_controller;
        m_thread.quit();
        m_thread.wait();
    }

    ThreadedController(const ThreadedController &) = delete;
    ThreadedController &operator=(const ThreadedController &) = delete;

    void moveAway()
    {
        m_controller->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_controller, &QObject::deleteLater);
        m_thread.start();
        inThread([this](auto &) { m_id = std::this_thread::get_id(); });
    }

    tavro::aiassistant::AiController *operator->() const { return m_controller; }
    tavro::aiassistant::AiController &controller() const { return *m_controller; }
    std::thread::id threadId() const { return m_id; }

    /// Carries @p action out in the controller's thread, and waits for its end. Not to be called there.
    template <typename Action>
    void inThread(Action action) const
    {
        auto &d = tavro::aiassistant::AiControllerAccess::of(*m_controller);
        std::promise<void> done;
        d.post([&] {
            action(d);
            done.set_value();
        });
        done.get_future().wait();
    }

private:
    QThread m_thread;
    tavro::aiassistant::AiController *m_controller;
    std::thread::id m_id;
};
