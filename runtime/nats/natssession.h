#pragma once

#include "nats/natshandles.h"
#include "nats/natsincoming.h"
#include "nats/natsoptions.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tavro::runtime {

/// One connection to a broker with its subscriptions. It does not come back by itself once it is lost. send() may be
/// called from any thread, the other operations from one.
class NatsSession {
public:
    struct Opened {
        std::shared_ptr<NatsSession> session; ///< null where it failed
        bool isRefused = false; ///< the broker, or this machine's idea of its certificate, does not allow it
        std::string text; ///< why it failed; without credentials
    };

    /// Connects to @p server, one of the addresses of @p options. Blocks for the look-up of its name, while other
    /// connections of this process are being made, and then for two NatsOptions::connectTimeout at most: one for the
    /// connection, one for a broker that stalls then. Once @p isHurried, it waits for no others, and the last is cut
    /// short.
    static Opened open(const NatsOptions &options, const QString &server, std::shared_ptr<NatsIncoming> incoming,
                       const std::atomic_bool &isHurried);

    ~NatsSession();

    NatsSession(const NatsSession &) = delete;
    NatsSession &operator=(const NatsSession &) = delete;

    natsStatus listen(NatsIncoming::Kind kind, const std::string &subject);
    natsStatus listenToCalls(const std::string &subject); ///< an empty subject: no more
    natsStatus flush(std::chrono::milliseconds limit); ///< waits until the broker has seen all
    /// A send that the broker does not take within NatsOptions::writeTimeout fails, and ends the connection.
    natsStatus send(const std::string &subject, const std::string &replyTo, const char *data, std::size_t size);
    std::size_t maxPayload() const;

private:
    NatsSession(NatsPointer<natsConnection> connection, std::shared_ptr<NatsIncoming> incoming);
    natsStatus subscribe(NatsIncoming::Kind kind, const std::string &subject,
                         NatsPointer<natsSubscription> &subscription);

    NatsPointer<natsConnection> m_connection;
    std::shared_ptr<NatsIncoming> m_incoming;
    std::vector<NatsPointer<natsSubscription>> m_subscriptions;
    NatsPointer<natsSubscription> m_calls;
};

} // namespace tavro::runtime
