#pragma once

#include "aicontroller/aicontroller.h"
#include "nats/natsruntime.h"

#include <QThread>

#include <condition_variable>
#include <functional>
#include <mutex>

/// A controller and its runtime in a thread with an event loop of its own.
class MachineThread : public QThread {
public:
    struct Machine {
        Machine(tavro::runtime::Roles roles, const tavro::runtime::NatsOptions &options);

        // The controller uses the runtime to its end.
        tavro::runtime::NatsRuntime runtime;
        tavro::aiassistant::AiController controller;
    };
    using Action = std::function<void(Machine &)>;

    MachineThread(tavro::runtime::Roles roles, const tavro::runtime::NatsOptions &options);
    ~MachineThread() override; ///< ends the thread

    /// Starts the thread and carries out @p setUp in it, with the new machine, before anything can happen there.
    void begin(Action setUp);
    /// Blocks until the machine knows of one that serves; false where it does not come to that.
    bool isReady();
    /// Has the thread carry @p action out.
    void post(Action action);

protected:
    void run() override;

private:
    void setPresent(bool present);

    const tavro::runtime::Roles m_roles;
    const tavro::runtime::NatsOptions m_options;
    Action m_setUp;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    Machine *m_machine = nullptr; ///< lives in run()
    bool m_serverPresent = false;
};
