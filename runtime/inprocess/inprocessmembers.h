#pragma once

#include "machine/machineruntime_p.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tavro::runtime {

/// A runtime as the others on its bus see it.
struct InProcessMember {
    Roles roles;
    std::string name;
    Mailbox mailbox;
    std::function<void(const Presence &)> show;
};

/// The runtimes on a bus; the server that came first serves. May be used from any thread.
class InProcessMembers {
public:
    explicit InProcessMembers(unsigned int maxPayload);

    void join(const std::shared_ptr<InProcessMember> &member);
    void leave(const std::shared_ptr<InProcessMember> &member);

    /// Deliver a message, or tell why not; an empty answer is success.
    std::string toServer(const InProcessMember &sender, Message message);
    std::string toClients(const InProcessMember &sender, Message message);

private:
    const InProcessMember *server() const;
    void showPresence() const;

    const unsigned int m_maxPayload;
    std::mutex m_mutex;
    std::vector<std::shared_ptr<InProcessMember>> m_members;
};

} // namespace tavro::runtime
