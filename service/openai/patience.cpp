#include "openai/patience.h"

#include <algorithm>
#include <thread>

namespace tavro::assistantservice {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How late a cancellation may be noticed.
constexpr milliseconds step{50};

} // namespace

Patience::Patience(milliseconds limit, const std::atomic<bool> &cancelled)
    : m_end(Clock::now() + limit)
    , m_cancelled(cancelled)
{ }

milliseconds Patience::left() const
{
    return std::chrono::duration_cast<milliseconds>(m_end - Clock::now());
}

bool Patience::wait(milliseconds time) const
{
    const Clock::time_point end = Clock::now() + time;
    if (end >= m_end) {
        return false;
    }
    while (!m_cancelled && Clock::now() < end) {
        std::this_thread::sleep_for(std::min<Clock::duration>(step, end - Clock::now()));
    }
    return !m_cancelled;
}

} // namespace tavro::assistantservice
