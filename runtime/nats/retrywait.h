#pragma once

#include <chrono>

namespace tavro::runtime {

/// The waits between attempts: doubled each time up to a limit, and each a little off, so that the machines that lost
/// the same broker do not all come back at once.
class RetryWait {
public:
    using Wait = std::chrono::milliseconds;

    RetryWait(Wait first, Wait longest);

    Wait next(); ///< between 80 and 120 % of the wait that is due
    void reset() { m_due = m_first; }

private:
    const Wait m_first;
    const Wait m_longest;
    Wait m_due;
};

} // namespace tavro::runtime
