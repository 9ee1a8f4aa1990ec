#include "stopsignals.h"

#include <csignal>
#include <pthread.h>

namespace tavro::assistantservice {

namespace {

sigset_t stopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

} // namespace

void holdStopSignals()
{
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

int waitForStopSignal()
{
    const sigset_t signals = stopSignals();
    int signal = 0;
    sigwait(&signals, &signal);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    return signal;
}

} // namespace tavro::assistantservice
