#include "nats/retrywait.h"

#include <QRandomGenerator>

#include <algorithm>
#include <utility>

namespace tavro::runtime {

RetryWait::RetryWait(Wait first, Wait longest)
    : m_first(first)
    , m_longest(longest)
    , m_due(first)
{ }

RetryWait::Wait RetryWait::next()
{
    const Wait due = std::exchange(m_due, std::min(m_longest, 2 * m_due));
    return due * QRandomGenerator::global()->bounded(80, 121) / 100;
}

} // namespace tavro::runtime
