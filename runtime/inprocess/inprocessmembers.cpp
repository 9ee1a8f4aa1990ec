#include "inprocess/inprocessmembers.h"

#include "machine/lossreasons.h"

#include <algorithm>
#include <utility>

namespace tavro::runtime {

InProcessMembers::InProcessMembers(unsigned int maxPayload)
    : m_maxPayload(maxPayload)
{ }

void InProcessMembers::join(const std::shared_ptr<InProcessMember> &member)
{
    const std::lock_guard lock(m_mutex);
    m_members.push_back(member);
    showPresence();
}

void InProcessMembers::leave(const std::shared_ptr<InProcessMember> &member)
{
    const std::lock_guard lock(m_mutex);
    m_members.erase(std::find(m_members.begin(), m_members.end(), member));
    showPresence();
}

std::string InProcessMembers::toServer(const InProcessMember &sender, Message message)
{
    if (message.payload.size() > m_maxPayload)
        return LossReason::tooLarge(message.payload.size(), m_maxPayload);
    const std::lock_guard lock(m_mutex);
    const InProcessMember *const receiver = server();
    if (!receiver)
        return LossReason::noServer();
    if (receiver == &sender)
        return {};
    const bool isTaken = receiver->mailbox.put(std::make_shared<const Message>(std::move(message)));
    return isTaken ? std::string() : LossReason::receiverIsBusy();
}

std::string InProcessMembers::toClients(const InProcessMember &sender, Message message)
{
    if (message.payload.size() > m_maxPayload)
        return LossReason::tooLarge(message.payload.size(), m_maxPayload);
    const std::lock_guard lock(m_mutex);
    const InProcessMember *const serving = server();
    if (sender.roles.testFlag(Role::ProxyServer) && serving != &sender)
        return LossReason::standingBy(serving->name);
    const auto shared = std::make_shared<const Message>(std::move(message));
    bool isTaken = true;
    for (const auto &member : m_members) {
        if (member.get() != &sender && member->roles.testFlag(Role::ProxyClient))
            isTaken = member->mailbox.put(shared) && isTaken;
    }
    return isTaken ? std::string() : LossReason::receiverIsBusy();
}

const InProcessMember *InProcessMembers::server() const
{
    const auto isServer = [](const auto &member) { return member->roles.testFlag(Role::ProxyServer); };
    const auto found = std::find_if(m_members.begin(), m_members.end(), isServer);
    return found == m_members.end() ? nullptr : found->get();
}

void InProcessMembers::showPresence() const
{
    const InProcessMember *const serving = server();
    for (const auto &member : m_members) {
        Presence presence;
        presence.serverPresent = serving != nullptr;
        presence.serving = serving == member.get();
        if (member->roles.testFlag(Role::ProxyServer) && !presence.serving)
            presence.anotherServer = serving->name;
        member->show(presence);
    }
}

} // namespace tavro::runtime
