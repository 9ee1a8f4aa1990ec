#include "nats/natsruntime.h"

#include "machine/lossreasons.h"
#include "machine/machineruntime_p.h"
#include "nats/natslink.h"

namespace tavro::runtime {

class NatsRuntime::Private {
public:
    std::unique_ptr<NatsLink> link; ///< null where the options cannot be used
};

NatsRuntime::NatsRuntime(Roles roles, const NatsOptions &options)
    : MachineRuntime(roles)
    , d(std::make_unique<Private>())
{
    auto &shared = common();
    const QString problem = problemOf(options);
    if (!problem.isEmpty()) {
        shared.showConnection(Connection::Disconnected, problem.toStdString());
        return;
    }
    const LinkReports reports{
        [&shared](Connection connection, const std::string &text) { shared.showConnection(connection, text); },
        [&shared](const Presence &presence) { shared.showPresence(presence); },
        [&shared](const std::string &name, const std::string &reason) { shared.reportLost(name, reason); },
    };
    d->link = std::make_unique<NatsLink>(roles, options, shared.mailbox, reports);
}

NatsRuntime::~NatsRuntime() = default;

void NatsRuntime::sendToServer(const char *name, const char *data, unsigned int size)
{
    if (d->link)
        d->link->sendCall(name, data, size);
    else
        common().reportLost(name, LossReason::notConnected());
}

void NatsRuntime::sendToClients(const char *name, const char *data, unsigned int size)
{
    if (d->link)
        d->link->sendCompletion(name, data, size);
    else
        common().reportLost(name, LossReason::notConnected());
}

} // namespace tavro::runtime
