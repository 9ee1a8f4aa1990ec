#pragma once

#include <httplib.h>

#include <array>
#include <chrono>

namespace tavro::assistantservice {

class Wakeups;

/// The bytes to and from one client, with an end to its patience: a request has to arrive and its reply has to be taken
/// within the time limit, plus what their sizes need at the least speed. A client that sends or takes a byte now and
/// then does not hold its thread for longer.
class ClientStream : public httplib::Stream {
public:
    ClientStream(socket_t socket, std::chrono::milliseconds limit, Wakeups &wakeups);
    ~ClientStream() override;

    /// Waits for the first byte of a request. Once `patience` is over, the connection also ends when its thread is
    /// needed elsewhere.
    bool waitForRequest(std::chrono::milliseconds limit, std::chrono::milliseconds patience);
    /// Starts the time of the request that is read next, and limits the size of its head.
    void startRequest();
    /// Lifts the limit of the head: the body, which comes now, has its own.
    void startBody();
    bool isOverdue() const;
    /// Lets the client read the reply before the connection goes, although it may still be sending.
    void lingerBeforeClose();

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char *data, size_t size) override;
    ssize_t write(const char *data, size_t size) override;
    void get_remote_ip_and_port(std::string &ip, int &port) const override;
    void get_local_ip_and_port(std::string &ip, int &port) const override;
    socket_t socket() const override { return m_socket; }

private:
    using Clock = std::chrono::steady_clock;

    bool waitFor(short event);
    bool mayGiveWay(short event) const;
    Clock::time_point nextLook(short event) const;
    bool fillBuffer();
    void acknowledgeAtOnce() const;
    void countBytes(size_t size);

    const socket_t m_socket;
    const std::chrono::milliseconds m_limit;
    Wakeups &m_wakeups;
    Clock::time_point m_deadline;
    Clock::time_point m_started;
    bool m_hurried = false;
    size_t m_headLeft = 0;
    bool m_readingHead = true;
    std::array<char, 16384> m_buffer;
    size_t m_begin = 0;
    size_t m_end = 0;
};

} // namespace tavro::assistantservice
