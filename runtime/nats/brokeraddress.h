#pragma once

#include <QString>

#include <memory>

struct addrinfo;

namespace tavro::runtime {

/// Where a broker's sockets are.
class BrokerAddress {
public:
    /// Looks up the name in @p server, one of NatsOptions::servers; blocks for as long as the system's resolver does.
    explicit BrokerAddress(const QString &server);

    bool isKnown() const { return m_all != nullptr; }
    QString problem() const { return m_problem; } ///< why the name is not known; for the operator

    /// Whether @p socket is connected to it.
    bool isPeerOf(int socket) const;

private:
    struct Deleter {
        void operator()(addrinfo *list) const;
    };

    std::unique_ptr<addrinfo, Deleter> m_all;
    QString m_problem;
};

} // namespace tavro::runtime
