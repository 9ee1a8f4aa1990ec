#include "assistant/machines.h"

#include "inprocess/inprocessruntime.h"
#include "nats/natsruntime.h"

namespace tavro::playout {

using runtime::MachineRuntime;

namespace {

constexpr std::chrono::seconds timeToBeHeard{3};

} // namespace

Machines::Machines(const Options &options)
{
    switch (options.role) {
    case Role::Local:
        m_serving = m_showing = add(std::make_unique<runtime::InProcessRuntime>(m_bus, runtime::Role::LocalExecutor));
        break;
    case Role::All:
        joinInProcess();
        break;
    case Role::Server:
    case Role::Client:
        joinBroker(options);
        break;
    }
}

WatchedRuntime *Machines::add(std::unique_ptr<MachineRuntime> machine)
{
    m_machines.push_back(std::move(machine));
    m_watched.push_back(std::make_unique<WatchedRuntime>(*m_machines.back()));
    return m_watched.back().get();
}

void Machines::joinInProcess()
{
    m_serving = add(std::make_unique<runtime::InProcessRuntime>(m_bus, runtime::Role::ProxyServer));
    m_showing = add(std::make_unique<runtime::InProcessRuntime>(m_bus, runtime::Role::ProxyClient));
    m_link = m_machines.back().get();
}

void Machines::joinBroker(const Options &options)
{
    m_byBroker = true;
    const bool serves = options.role == Role::Server;
    const auto role = serves ? runtime::Role::ProxyServer : runtime::Role::ProxyClient;
    (serves ? m_serving : m_showing) = add(std::make_unique<runtime::NatsRuntime>(role, options.nats));
    m_link = m_machines.back().get();
    m_patience.setSingleShot(true);
    m_patience.setInterval(timeToBeHeard);
    connect(&m_patience, &QTimer::timeout, this, &Machines::report);
    connect(m_link, &MachineRuntime::sigConnectionChanged, this, &Machines::onConnectionChanged);
    connect(m_link, &MachineRuntime::sigServerPresentChanged, this, &Machines::report);
    connect(m_link, &MachineRuntime::sigServingChanged, this, &Machines::report);
    connect(m_link, &MachineRuntime::sigAnotherServer, this, &Machines::report);
}

void Machines::onConnectionChanged()
{
    if (m_link->connection() == MachineRuntime::Connection::Connected)
        m_patience.start();
    else
        m_patience.stop();
    report();
}

void Machines::report()
{
    if (!m_byBroker) {
        Q_EMIT sigConnection(QStringLiteral("this machine only"), true);
        return;
    }
    if (m_link->connection() != MachineRuntime::Connection::Connected) {
        Q_EMIT sigConnection(m_link->connectionText(), m_link->connection() == MachineRuntime::Connection::Connecting);
        return;
    }
    const bool isGood =
        m_serving ? m_link->anotherServer().isEmpty() : m_link->isServerPresent() || m_patience.isActive();
    Q_EMIT sigConnection(m_serving ? serversView() : clientsView(), isGood);
}

QString Machines::clientsView() const
{
    if (m_link->isServerPresent())
        return QStringLiteral("connected to the serving machine");
    if (m_patience.isActive())
        return QStringLiteral("connected, looking for the serving machine");
    return QStringLiteral("connected, but no machine serves the group");
}

QString Machines::serversView() const
{
    if (m_link->isServing())
        return QStringLiteral("connected, serving");
    if (m_link->anotherServer().isEmpty())
        return QStringLiteral("connected, looking for another server");
    return QStringLiteral("standing by, %1 serves the group").arg(m_link->anotherServer());
}

} // namespace tavro::playout
