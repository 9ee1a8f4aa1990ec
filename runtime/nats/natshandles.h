#pragma once

#include <nats/nats.h>

#include <memory>

namespace tavro::runtime {

struct NatsDeleter {
    void operator()(natsOptions *options) const { natsOptions_Destroy(options); }
    void operator()(natsConnection *connection) const { natsConnection_Destroy(connection); }
    void operator()(natsSubscription *subscription) const { natsSubscription_Destroy(subscription); }
    void operator()(natsMsg *message) const { natsMsg_Destroy(message); }
};

template <typename T>
using NatsPointer = std::unique_ptr<T, NatsDeleter>;

} // namespace tavro::runtime
