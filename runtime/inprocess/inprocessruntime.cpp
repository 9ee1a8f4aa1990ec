#include "inprocess/inprocessruntime.h"

#include "inprocess/inprocessmembers.h"

#include <string>

namespace tavro::runtime {

namespace {

std::string nameOr(const QString &name, const char *preset)
{
    return name.isEmpty() ? std::string(preset) : name.toStdString();
}

} // namespace

InProcessRuntime::InProcessRuntime(InProcessBus &bus, Roles roles, const QString &name)
    : MachineRuntime(roles)
    , m_members(bus.m_members)
    , m_member(std::make_shared<InProcessMember>(
          InProcessMember{roles, nameOr(name, "a machine without a name"), common().mailbox,
                          [this](const Presence &presence) { common().showPresence(presence); }}))
{
    common().connection = Connection::Connected;
    common().connectionText = QStringLiteral("Connected within this process");
    m_members->join(m_member);
}

InProcessRuntime::~InProcessRuntime()
{
    m_members->leave(m_member);
}

void InProcessRuntime::sendToServer(const char *name, const char *data, unsigned int size)
{
    const std::string lost = m_members->toServer(*m_member, makeMessage(name, data, size));
    if (!lost.empty())
        common().reportLost(name, lost);
}

void InProcessRuntime::sendToClients(const char *name, const char *data, unsigned int size)
{
    const std::string lost = m_members->toClients(*m_member, makeMessage(name, data, size));
    if (!lost.empty())
        common().reportLost(name, lost);
}

} // namespace tavro::runtime
