#include "hostkit/stopsignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tavro::hostkit {

namespace {

// A signal handler may do little more than write to a file that is open already.
std::array<int, 2> wakeUpPipe{-1, -1};

void onSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = write(wakeUpPipe[1], &byte, 1);
    errno = error;
}

void handle(int number)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

} // namespace

StopSignals::StopSignals()
{
    if (pipe2(wakeUpPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(wakeUpPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &StopSignals::onReadable);
    handle(SIGINT);
    handle(SIGTERM);
}

StopSignals::~StopSignals()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    m_notifier.reset();
    for (const int file : wakeUpPipe)
        close(file);
}

void StopSignals::onReadable()
{
    char number = 0;
    if (read(wakeUpPipe[0], &number, 1) == 1)
        Q_EMIT sigReceived(number);
}

} // namespace tavro::hostkit
