#pragma once

#include <chrono>
#include <mutex>

namespace tavro::runtime {

/// Notices that this process stood still (stopped, or starved) for so long that what it finds afterwards is stale. May
/// be used from any thread: the first that looks notices.
class Pulse {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit Pulse(std::chrono::milliseconds longest)
        : m_longest(longest)
    { }

    void start(Time now); ///< from now on it has to beat
    void stop(); ///< it need not beat any more
    bool beat(Time now); ///< false where it stood still, for good
    bool isAlive(Time now); ///< the same, without a beat

private:
    bool check(Time now);

    const std::chrono::milliseconds m_longest;
    std::mutex m_mutex;
    Time m_last = Time::max();
    bool m_stoodStill = false;
};

} // namespace tavro::runtime
