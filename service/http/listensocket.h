#pragma once

#include <string>

namespace tavro::assistantservice {

/// A socket to which clients connect. It is closed with its owner, unless release() has handed it on.
class ListenSocket {
public:
    ListenSocket() = default;
    ~ListenSocket();
    ListenSocket(const ListenSocket &) = delete;
    ListenSocket &operator=(const ListenSocket &) = delete;

    /// The kernel queues connections from here on. `port` 0 picks a free one. Returns the port, or 0 where the address
    /// cannot be had; `errno` then says why, or is 0 where the name is unknown. To be called once.
    int open(const std::string &host, int port);

    int descriptor() const { return m_descriptor; }
    /// The descriptor, which is the caller's to close from now on.
    int release();

private:
    int m_descriptor = -1;
};

} // namespace tavro::assistantservice
