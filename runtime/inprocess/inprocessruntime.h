#pragma once

#include "inprocess/inprocessbus.h"
#include "machine/machineruntime.h"

#include <memory>

namespace tavro::runtime {

struct InProcessMember;

/// A machine on an InProcessBus, connected from the start. Messages of one sender arrive in the order in which they
/// were sent, and never at the sender.
class InProcessRuntime : public MachineRuntime {
    Q_OBJECT

public:
    /// @p name tells machines apart, see anotherServer().
    InProcessRuntime(InProcessBus &bus, Roles roles, const QString &name = {});
    ~InProcessRuntime() override;

    /// A payload over the bus's limit, and a call that no machine serves, is reported by sigMessageLost().
    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;

private:
    const std::shared_ptr<InProcessMembers> m_members;
    const std::shared_ptr<InProcessMember> m_member;
};

} // namespace tavro::runtime
