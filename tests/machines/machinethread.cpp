#include "machinethread.h"

#include "support/waiting.h"

#include <utility>

using namespace tavro::runtime;

MachineThread::Machine::Machine(Roles roles, const NatsOptions &options)
    : runtime(roles, options)
{
    controller.setZVRuntime(&runtime);
    controller.createTimer();
    // With no time between them, the polls follow at once.
    controller.setSingleTickTime(0);
}

MachineThread::MachineThread(Roles roles, const NatsOptions &options)
    : m_roles(roles)
    , m_options(options)
{ }

MachineThread::~MachineThread()
{
    quit();
    wait();
}

void MachineThread::begin(Action setUp)
{
    m_setUp = std::move(setUp);
    start();
}

bool MachineThread::isReady()
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, tavro::testsupport::waitLimit, [this] { return m_serverPresent; });
}

void MachineThread::post(Action action)
{
    const std::lock_guard lock(m_mutex);
    Machine *const machine = m_machine;
    machine->runtime.dispatcher().post([machine, action = std::move(action)] { action(*machine); });
}

void MachineThread::run()
{
    Machine machine(m_roles, m_options);
    connect(&machine.runtime, &MachineRuntime::sigServerPresentChanged, &machine.runtime,
            [this](bool present) { setPresent(present); });
    m_setUp(machine);
    {
        const std::lock_guard lock(m_mutex);
        m_machine = &machine;
    }
    exec();
    machine.controller.clear();
}

void MachineThread::setPresent(bool present)
{
    const std::lock_guard lock(m_mutex);
    m_serverPresent = present;
    m_changed.notify_all();
}
