#pragma once

#include <atomic>
#include <chrono>

namespace tavro::assistantservice {

/// How long a piece of work may still take, and whether anybody waits for it. It may be asked from any thread, and
/// refers to the flag.
class Patience {
public:
    Patience(std::chrono::milliseconds limit, const std::atomic<bool> &cancelled);

    bool isCancelled() const { return m_cancelled; }
    bool isSpent() const { return m_cancelled || left() <= std::chrono::milliseconds::zero(); }
    std::chrono::milliseconds left() const;

    /// Blocks the thread for so long. False, at once or in between, where the patience does not last that long.
    bool wait(std::chrono::milliseconds time) const;

private:
    const std::chrono::steady_clock::time_point m_end;
    const std::atomic<bool> &m_cancelled;
};

} // namespace tavro::assistantservice
