#include "nats/linkevents.h"

#include <utility>

namespace tavro::runtime {

void LinkEvents::put(LinkEvent event)
{
    const std::lock_guard lock(m_mutex);
    m_events.push_back(std::move(event));
    m_changed.notify_one();
}

std::optional<LinkEvent> LinkEvents::takeUntil(Time end)
{
    std::unique_lock lock(m_mutex);
    const auto isThere = [this] { return !m_events.empty(); };
    // A wait until the end of time overflows in the clock's own arithmetic.
    if (end == Time::max())
        m_changed.wait(lock, isThere);
    else if (!m_changed.wait_until(lock, end, isThere))
        return std::nullopt;
    LinkEvent event = std::move(m_events.front());
    m_events.pop_front();
    return event;
}

} // namespace tavro::runtime
