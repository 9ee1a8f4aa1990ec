#include "http/wakeups.h"

#include <cerrno>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

int newEvent(int flags)
{
    const int descriptor = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC | flags);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    return descriptor;
}

} // namespace

Wakeups::Wakeups()
    : m_stop(newEvent(0))
    , m_threadRequests(newEvent(EFD_SEMAPHORE))
{ }

Wakeups::~Wakeups()
{
    ::close(m_stop);
    ::close(m_threadRequests);
}

void Wakeups::stop()
{
    m_stopped = true;
    eventfd_write(m_stop, 1);
}

void Wakeups::askForThread()
{
    eventfd_write(m_threadRequests, 1);
}

bool Wakeups::takeThreadRequest()
{
    eventfd_t value = 0;
    return eventfd_read(m_threadRequests, &value) == 0;
}

} // namespace tavro::assistantservice
