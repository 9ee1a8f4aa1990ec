#include "nats/pulse.h"

namespace tavro::runtime {

void Pulse::start(Time now)
{
    const std::lock_guard lock(m_mutex);
    m_last = now;
}

void Pulse::stop()
{
    const std::lock_guard lock(m_mutex);
    m_last = Time::max();
}

bool Pulse::beat(Time now)
{
    const std::lock_guard lock(m_mutex);
    if (!check(now))
        return false;
    if (m_last != Time::max())
        m_last = now;
    return true;
}

bool Pulse::isAlive(Time now)
{
    const std::lock_guard lock(m_mutex);
    return check(now);
}

bool Pulse::check(Time now)
{
    m_stoodStill = m_stoodStill || (m_last != Time::max() && now - m_last > m_longest);
    return !m_stoodStill;
}

} // namespace tavro::runtime
