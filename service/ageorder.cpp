#include "ageorder.h"

namespace tavro::assistantservice {

AgeOrder::Number AgeOrder::add(const QString &id, qint64 bytes)
{
    m_things.emplace(++m_last, Thing{id, bytes});
    m_bytes += bytes;
    return m_last;
}

void AgeOrder::remove(Number number)
{
    const auto thing = m_things.find(number);
    if (thing != m_things.end()) {
        m_bytes -= thing->second.bytes;
        m_things.erase(thing);
    }
}

} // namespace tavro::assistantservice
