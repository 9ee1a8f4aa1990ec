#include "nats/connectguard.h"

#include <fcntl.h>
#include <filesystem>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tavro::runtime {

namespace {

constexpr std::chrono::milliseconds lookInterval{50};
constexpr std::chrono::milliseconds hurriedLimit{100};

std::vector<int> openFiles()
{
    std::vector<int> files;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc/self/fd", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        files.push_back(std::stoi(entry->path().filename().string()));
    return files;
}

// 0 where it is no socket.
ino_t socketNumber(int file)
{
    struct stat status { };
    return fstat(file, &status) == 0 && S_ISSOCK(status.st_mode) ? status.st_ino : 0;
}

std::set<ino_t> openSockets()
{
    std::set<ino_t> numbers;
    for (const int file : openFiles())
        numbers.insert(socketNumber(file));
    return numbers;
}

std::chrono::milliseconds silenceOf(int socket)
{
    tcp_info info{};
    socklen_t size = sizeof info;
    const bool isTcp = getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0;
    return std::chrono::milliseconds(isTcp ? info.tcpi_last_data_recv : 0);
}

} // namespace

ConnectGuard::ConnectGuard(const BrokerAddress &broker, std::chrono::milliseconds limit,
                           const std::atomic_bool &isHurried)
    : m_broker(broker)
    , m_limit(limit)
    , m_isHurried(isHurried)
    , m_earlier(openSockets())
    , m_thread([this] { watch(); })
{ }

ConnectGuard::~ConnectGuard()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
        m_over.notify_one();
    }
    m_thread.join();
}

void ConnectGuard::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_over.wait_for(lock, lookInterval, [this] { return m_isOver; })) {
        lock.unlock();
        endSilentOnes();
        lock.lock();
    }
}

void ConnectGuard::endSilentOnes()
{
    for (const int file : openFiles()) {
        if (isSilentAttempt(file))
            end(file);
    }
}

// By a descriptor of the guard's own: what is behind another's may change after a look at it. Only now, for closing a
// second descriptor of a file would take the program's locks off it.
void ConnectGuard::end(int socket)
{
    const int own = fcntl(socket, F_DUPFD_CLOEXEC, 0);
    if (own < 0)
        return;
    if (isSilentAttempt(own)) {
        m_hasStruck = true;
        shutdown(own, SHUT_RDWR);
    }
    close(own);
}

bool ConnectGuard::isSilentAttempt(int socket) const
{
    const ino_t number = socketNumber(socket);
    return number != 0 && m_earlier.count(number) == 0 && m_broker.isPeerOf(socket)
        && silenceOf(socket) >= (m_isHurried ? hurriedLimit : m_limit);
}

} // namespace tavro::runtime
