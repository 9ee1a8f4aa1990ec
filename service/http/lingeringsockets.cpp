#include "http/lingeringsockets.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

constexpr std::chrono::milliseconds lingerTime{1000};
constexpr size_t lingerBytes = 16 * 1024 * 1024;
constexpr size_t mostSockets = 64;
constexpr int lookIntervalMs = 100;

} // namespace

LingeringSockets::LingeringSockets()
    : m_thread([this] { work(); })
{ }

LingeringSockets::~LingeringSockets()
{
    stop();
}

void LingeringSockets::add(int descriptor)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_stopping || m_count >= mostSockets) {
        return;
    }
    const int own = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (own < 0) {
        return;
    }
    m_new.push_back({own, Clock::now() + lingerTime, lingerBytes});
    ++m_count;
    m_changed.notify_one();
}

void LingeringSockets::stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_one();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void LingeringSockets::work()
{
    std::vector<Socket> sockets;
    while (true) {
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_changed.wait(lock, [&] { return m_stopping || !m_new.empty() || !sockets.empty(); });
            std::move(m_new.begin(), m_new.end(), std::back_inserter(sockets));
            m_new.clear();
            if (m_stopping) {
                break;
            }
        }
        readAll(sockets);
        closeFinished(sockets);
    }
    for (const Socket &socket : sockets) {
        ::close(socket.descriptor);
    }
}

void LingeringSockets::readAll(std::vector<Socket> &sockets)
{
    std::vector<pollfd> waits;
    waits.reserve(sockets.size());
    for (const Socket &socket : sockets) {
        waits.push_back({socket.descriptor, POLLIN, 0});
    }
    ::poll(waits.data(), waits.size(), lookIntervalMs);
    for (size_t i = 0; i < sockets.size(); ++i) {
        if (waits[i].revents != 0 && !readSome(sockets[i])) {
            sockets[i].left = 0;
        }
    }
}

bool LingeringSockets::readSome(Socket &socket)
{
    std::array<char, 65536> thrownAway;
    const ssize_t count = ::recv(socket.descriptor, thrownAway.data(), thrownAway.size(), MSG_DONTWAIT);
    if (count > 0) {
        socket.left -= std::min(socket.left, static_cast<size_t>(count));
    }
    return count > 0;
}

void LingeringSockets::closeFinished(std::vector<Socket> &sockets)
{
    const Clock::time_point now = Clock::now();
    const auto finished = std::partition(sockets.begin(), sockets.end(),
                                         [now](const Socket &socket) { return socket.left > 0 && now < socket.end; });
    std::for_each(finished, sockets.end(), [](const Socket &socket) { ::close(socket.descriptor); });
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_count -= static_cast<size_t>(std::distance(finished, sockets.end()));
    sockets.erase(finished, sockets.end());
}

} // namespace tavro::assistantservice
