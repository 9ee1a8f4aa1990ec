#include "linewriting.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

bool isWritable(int descriptor)
{
    pollfd wait{descriptor, POLLOUT, 0};
    return ::poll(&wait, 1, 0) == 1 && (wait.revents & POLLOUT) != 0;
}

} // namespace

// Not by O_NONBLOCK: that would hold for all programs that share the pipe or terminal. A pipe that can be written to
// has room for PIPE_BUF bytes at least. A socket may have less, but can be asked not to wait.
bool writeWithoutWaiting(int descriptor, const char *line, std::size_t size)
{
    const std::size_t fitting = std::min<std::size_t>(size, PIPE_BUF);
    if (!isWritable(descriptor)) {
        return false;
    }
    ssize_t written = ::send(descriptor, line, fitting, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (written < 0 && errno == ENOTSOCK) {
        written = ::write(descriptor, line, fitting);
    }
    return written == static_cast<ssize_t>(fitting);
}

} // namespace tavro::assistantservice
