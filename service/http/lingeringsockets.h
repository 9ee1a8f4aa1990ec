#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace tavro::assistantservice {

/// Connections that were answered before all of their request was read. Closing such a socket at once makes the kernel
/// tell the client that its bytes went nowhere, and many clients then never look at the reply. So what still comes is
/// read for a moment and thrown away. All functions may be called from any thread.
class LingeringSockets {
public:
    LingeringSockets();
    ~LingeringSockets();
    LingeringSockets(const LingeringSockets &) = delete;
    LingeringSockets &operator=(const LingeringSockets &) = delete;

    /// Takes over a duplicate of the descriptor; nothing happens where too many linger already.
    void add(int descriptor);
    /// Closes them all.
    void stop();

private:
    using Clock = std::chrono::steady_clock;

    struct Socket {
        int descriptor = -1;
        Clock::time_point end;
        size_t left = 0;
    };

    void work();
    static void readAll(std::vector<Socket> &sockets);
    static bool readSome(Socket &socket);
    void closeFinished(std::vector<Socket> &sockets);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Socket> m_new;
    size_t m_count = 0;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace tavro::assistantservice
