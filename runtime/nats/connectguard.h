#pragma once

#include "nats/brokeraddress.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <sys/types.h>
#include <thread>

namespace tavro::runtime {

/// Ends an attempt to connect that would not end by itself.
///
/// The NATS library's own limit holds for the connection and the broker's greeting only. Where the broker or the line
/// stalls after the greeting, the library (3.4) waits for ever, without TLS busily and with growing memory, and tells
/// nobody which socket it waits for. So the guard looks for it: a socket of this process that was opened after the
/// guard was made, that leads to the broker, and that has received nothing for the time. It is shut down, and the
/// library's call returns with a failure. Attempts of one process must not overlap: see ConnectTurn.
class ConnectGuard {
public:
    /// @p isHurried: the attempt is not wanted any more, and need not be given its time. Both references must outlive
    /// the guard.
    ConnectGuard(const BrokerAddress &broker, std::chrono::milliseconds limit, const std::atomic_bool &isHurried);
    ~ConnectGuard(); ///< the attempt has ended

    ConnectGuard(const ConnectGuard &) = delete;
    ConnectGuard &operator=(const ConnectGuard &) = delete;

    /// Whether it had to end the attempt.
    bool hasStruck() const { return m_hasStruck; }

private:
    void watch();
    void endSilentOnes();
    void end(int socket);
    bool isSilentAttempt(int socket) const;

    const BrokerAddress &m_broker;
    const std::chrono::milliseconds m_limit;
    const std::atomic_bool &m_isHurried;
    const std::set<ino_t> m_earlier; ///< the sockets that were there before
    std::atomic_bool m_hasStruck{false};
    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_isOver = false;
    std::thread m_thread;
};

} // namespace tavro::runtime
