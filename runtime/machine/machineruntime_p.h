#pragma once

#include "machine/machineruntime.h"
#include "machine/mailbox.h"

#include <memory>
#include <string>

namespace tavro::runtime {

/// Who serves the group, as this machine sees it.
struct Presence {
    bool serverPresent = false;
    bool serverGone = false; ///< one was there, and is not any more
    bool serving = false;
    std::string anotherServer;
};

/// What a kind of runtime tells its common part. The operations may be called from any thread while the runtime lives;
/// they take effect on its own thread, in the order in which they were called.
class MachineRuntime::Private {
public:
    Private(MachineRuntime *owner, Roles ownRoles);

    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    void showConnection(Connection connection, const std::string &text);
    void showPresence(const Presence &presence);
    void reportLost(const std::string &name, const std::string &reason);

    MachineRuntime *const q;
    const Roles roles;
    QtDispatcher *const dispatcher;
    const std::shared_ptr<CallHandlers> handlers = std::make_shared<CallHandlers>();
    const Mailbox mailbox{dispatcher->line(), handlers};
    Connection connection = Connection::Connecting;
    QString connectionText;
    Presence presence;

private:
    void setConnection(Connection newConnection, const QString &text);
    void setPresence(const Presence &newPresence);
};

} // namespace tavro::runtime
