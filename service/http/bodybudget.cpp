#include "http/bodybudget.h"

#include "http/bodyhead.h"

#include <algorithm>

namespace tavro::assistantservice {

RequestBody::RequestBody(BodyBudget &budget)
    : m_budget(budget)
{ }

RequestBody::~RequestBody()
{
    m_budget.remove(*this);
}

bool RequestBody::take(const char *data, size_t size)
{
    m_received += static_cast<qint64>(size);
    if (m_received > m_budget.largestBody()) {
        drop();
    } else if (!m_madeRoom) {
        m_bytes.append(data, static_cast<int>(size));
        m_budget.add(*this, static_cast<qint64>(size));
    }
    return m_received <= m_budget.largestBody() + thrownAwayAtMost;
}

ServiceError RequestBody::error() const
{
    if (m_received > m_budget.largestBody()) {
        return bodyTooLarge(m_budget.largestBody());
    }
    if (m_madeRoom) {
        return {ErrorCode::Busy,
                QStringLiteral("The assistant service is taking in too many large requests at once. Please try again "
                               "in a moment.")};
    }
    return {};
}

void RequestBody::drop()
{
    m_budget.remove(*this);
    m_bytes = QByteArray();
}

BodyBudget::BodyBudget(qint64 largest, qint64 together)
    : m_largest(largest)
    , m_together(together)
{ }

void BodyBudget::add(RequestBody &body, qint64 size)
{
    m_bodies.insert(&body);
    m_used += size;
    while (m_used > m_together) {
        RequestBody *const largest = *std::max_element(
            m_bodies.begin(), m_bodies.end(), [](auto *a, auto *b) { return a->m_bytes.size() < b->m_bytes.size(); });
        largest->m_madeRoom = true;
        largest->drop();
    }
}

void BodyBudget::remove(RequestBody &body)
{
    if (m_bodies.erase(&body) > 0) {
        m_used -= body.m_bytes.size();
    }
}

} // namespace tavro::assistantservice
