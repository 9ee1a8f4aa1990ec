#pragma once

#include <QByteArray>

#include <atomic>
#include <thread>

namespace upstream {

/// A server on a free loopback port that answers one request with the beginning and then, again and again, with the
/// piece, until the client goes or a limit of 64 MiB is reached. `beginning` and `piece` are sent as they are.
class FloodServer {
public:
    static constexpr qint64 mostBytes = 64 * 1024 * 1024;

    FloodServer(const QByteArray &beginning, const QByteArray &piece);
    ~FloodServer();
    FloodServer(const FloodServer &) = delete;
    FloodServer &operator=(const FloodServer &) = delete;

    quint16 port() const { return m_port; }
    /// What the client took, or the system for it; right once the server has gone.
    qint64 sentBytes();

private:
    void serve(const QByteArray &beginning, const QByteArray &piece);
    bool sendWhole(int socket, const QByteArray &bytes);

    int m_listening = -1;
    quint16 m_port = 0;
    std::atomic<qint64> m_sent{0};
    std::thread m_thread;
};

} // namespace upstream
