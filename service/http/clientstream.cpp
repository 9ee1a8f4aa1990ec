#include "http/clientstream.h"

#include "http/wakeups.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

using std::chrono::milliseconds;

constexpr size_t largestHead = 64 * 1024;
constexpr size_t leastBytesPerMillisecond = 64;
constexpr milliseconds graceWhenStopping{1000};
constexpr milliseconds lingerTime{1000};
constexpr milliseconds lingerTimeWhenStopping{200};
constexpr milliseconds slowHead{2000};
constexpr size_t lingerBytes = 16 * 1024 * 1024;

int millisecondsUntil(std::chrono::steady_clock::time_point deadline)
{
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<milliseconds::rep>(left.count() + 1, 0, 3600 * 1000));
}

bool isTemporary(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

} // namespace

ClientStream::ClientStream(socket_t socket, milliseconds limit, Wakeups &wakeups)
    : m_socket(socket)
    , m_limit(limit)
    , m_wakeups(wakeups)
{
    startRequest();
}

ClientStream::~ClientStream()
{
    ::shutdown(m_socket, SHUT_RDWR);
    ::close(m_socket);
}

bool ClientStream::waitForRequest(milliseconds limit, milliseconds patience)
{
    if (m_begin < m_end) {
        return true;
    }
    const Clock::time_point patientUntil = Clock::now() + patience;
    const Clock::time_point end = Clock::now() + limit;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        const bool mayGiveWay = now >= patientUntil;
        pollfd waits[] = {{m_socket, POLLIN, 0},
                          {m_wakeups.stopDescriptor(), POLLIN, 0},
                          {mayGiveWay ? m_wakeups.threadRequestDescriptor() : -1, POLLIN, 0}};
        const int ready = ::poll(waits, 3, millisecondsUntil(mayGiveWay ? end : std::min(end, patientUntil)));
        if (ready < 0 && errno != EINTR) {
            return false;
        }
        if (ready > 0 && waits[0].revents != 0) {
            return true;
        }
        if (ready > 0 && (waits[1].revents != 0 || m_wakeups.takeThreadRequest())) {
            return false;
        }
    }
    return false;
}

void ClientStream::startRequest()
{
    m_started = Clock::now();
    m_deadline = m_started + m_limit;
    m_hurried = false;
    m_headLeft = largestHead;
    m_readingHead = true;
}

void ClientStream::startBody()
{
    m_readingHead = false;
}

bool ClientStream::isOverdue() const
{
    return Clock::now() >= m_deadline;
}

void ClientStream::lingerBeforeClose()
{
    ::shutdown(m_socket, SHUT_WR);
    m_deadline = std::min(m_deadline, Clock::now()) + (m_wakeups.isStopped() ? lingerTimeWhenStopping : lingerTime);
    m_readingHead = false;
    for (size_t total = 0; total < lingerBytes && waitFor(POLLIN); total += m_end) {
        if (!fillBuffer()) {
            return;
        }
    }
}

// A head takes one packet: who sends it in drops must not keep the threads from others.
bool ClientStream::mayGiveWay(short event) const
{
    return event == POLLIN && m_readingHead && Clock::now() >= m_started + slowHead;
}

ClientStream::Clock::time_point ClientStream::nextLook(short event) const
{
    const bool patient = event == POLLIN && m_readingHead && !mayGiveWay(event);
    return patient ? std::min(m_deadline, m_started + slowHead) : m_deadline;
}

bool ClientStream::waitFor(short event)
{
    while (!isOverdue()) {
        pollfd waits[] = {{m_socket, event, 0},
                          {m_hurried ? -1 : m_wakeups.stopDescriptor(), POLLIN, 0},
                          {mayGiveWay(event) ? m_wakeups.threadRequestDescriptor() : -1, POLLIN, 0}};
        const int ready = ::poll(waits, 3, millisecondsUntil(nextLook(event)));
        if (ready < 0 && errno != EINTR) {
            return false;
        }
        if (ready > 0 && waits[1].revents != 0) {
            m_hurried = true;
            m_deadline = std::min(m_deadline, Clock::now() + graceWhenStopping);
        }
        if (ready > 0 && waits[0].revents != 0) {
            return true;
        }
        if (ready > 0 && waits[2].revents != 0 && m_wakeups.takeThreadRequest()) {
            return false;
        }
    }
    return false;
}

bool ClientStream::fillBuffer()
{
    const ssize_t count = ::recv(m_socket, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT);
    if (count < 0 && isTemporary(errno)) {
        m_begin = m_end = 0;
        return true;
    }
    acknowledgeAtOnce();
    m_begin = 0;
    m_end = count > 0 ? static_cast<size_t>(count) : 0;
    return count > 0;
}

// Many clients write head and body apart, and hold the body back until the head is acknowledged. The kernel would wait
// some 40 ms for an answer to send the acknowledgement with. It forgets the wish now and then, so it is told each time.
void ClientStream::acknowledgeAtOnce() const
{
    const int yes = 1;
    ::setsockopt(m_socket, IPPROTO_TCP, TCP_QUICKACK, &yes, sizeof(yes));
}

bool ClientStream::is_readable() const
{
    pollfd wait{m_socket, POLLIN, 0};
    return m_begin < m_end || ::poll(&wait, 1, 0) > 0;
}

bool ClientStream::is_writable() const
{
    return !isOverdue();
}

ssize_t ClientStream::read(char *data, size_t size)
{
    while (m_begin == m_end) {
        if (!waitFor(POLLIN)) {
            return -1;
        }
        if (!fillBuffer()) {
            return 0;
        }
    }
    const size_t count = std::min(size, m_end - m_begin);
    if (m_readingHead) {
        if (count > m_headLeft) {
            return -1;
        }
        m_headLeft -= count;
    }
    std::memcpy(data, m_buffer.data() + m_begin, count);
    m_begin += count;
    countBytes(count);
    return static_cast<ssize_t>(count);
}

ssize_t ClientStream::write(const char *data, size_t size)
{
    while (waitFor(POLLOUT)) {
        const ssize_t count = ::send(m_socket, data, size, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count >= 0) {
            countBytes(static_cast<size_t>(count));
            return count;
        }
        if (!isTemporary(errno)) {
            return -1;
        }
    }
    return -1;
}

void ClientStream::countBytes(size_t size)
{
    if (!m_hurried) {
        m_deadline += std::chrono::microseconds(size * 1000 / leastBytesPerMillisecond);
    }
}

// No endpoint asks where a request comes from, and the log does not keep it.
void ClientStream::get_remote_ip_and_port(std::string &ip, int &port) const
{
    ip.clear();
    port = 0;
}

void ClientStream::get_local_ip_and_port(std::string &ip, int &port) const
{
    ip.clear();
    port = 0;
}

} // namespace tavro::assistantservice
