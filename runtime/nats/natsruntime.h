#pragma once

#include "machine/machineruntime.h"
#include "nats/natsoptions.h"

#include <memory>

namespace tavro::runtime {

/// A machine of a group that meets at a NATS broker.
///
/// Calls travel as `<prefix>.<group>.server.<CallName>`, completions as `<prefix>.<group>.clients.<CallName>`, with the
/// payload's bytes as they are. Messages of one sender arrive in order and never at the sender. While the connection
/// stands none is lost; what is sent without one is reported by sigMessageLost() and not sent later, for a question
/// that the operator has given up must not be asked after all.
///
/// The constructor returns at once; a thread of the runtime's own connects, and connects again for ever, with growing
/// waits between the attempts. Wrong credentials and a certificate that nobody vouches for show as Connection::Refused.
///
/// One machine of a group serves. A machine with that role asks, whenever it was connected, whether there is one
/// already (on subjects apart from the calls, see README.md) and serves only where there is none; see
/// MachineRuntime::isServing(). The serving machine says every NatsOptions::presenceInterval that it is there, as long
/// as its process runs and is connected, also while its thread is busy.
class NatsRuntime : public MachineRuntime {
    Q_OBJECT

public:
    /// Options that cannot be used (see problemOf()) leave the runtime disconnected for good, with the reason as
    /// connectionText().
    NatsRuntime(Roles roles, const NatsOptions &options);
    /// Says goodbye, where it served, and waits for an attempt to connect that is under way:
    /// NatsOptions::connectTimeout at most, and the look-up of the broker's name. A broker that stalls after its
    /// greeting is not waited for.
    ~NatsRuntime() override;

    /// A payload over the broker's limit, a call that no machine serves, and a message without a connection are
    /// reported by sigMessageLost(). Returns at once unless the broker stalls, then after NatsOptions::writeTimeout.
    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::runtime
