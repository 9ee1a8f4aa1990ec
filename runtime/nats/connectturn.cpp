#include "nats/connectturn.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tavro::runtime {

namespace {

struct Turns {
    std::mutex mutex;
    std::condition_variable freed;
    bool isTaken = false;
};

Turns &turns()
{
    static Turns all;
    return all;
}

} // namespace

ConnectTurn::ConnectTurn(const std::atomic_bool &isHurried)
{
    // Nobody wakes a waiting attempt when it becomes hurried.
    constexpr std::chrono::milliseconds lookInterval{50};
    Turns &all = turns();
    std::unique_lock lock(all.mutex);
    while (all.isTaken && !isHurried)
        all.freed.wait_for(lock, lookInterval);
    m_isHeld = !all.isTaken;
    all.isTaken = true;
}

ConnectTurn::~ConnectTurn()
{
    if (!m_isHeld)
        return;
    Turns &all = turns();
    const std::lock_guard lock(all.mutex);
    all.isTaken = false;
    all.freed.notify_one();
}

} // namespace tavro::runtime
