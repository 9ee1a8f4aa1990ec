#include "pictures/random.h"

namespace tavro::assistantservice {

quint64 hashOf(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    quint64 hash = 0xCBF29CE484222325U;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return hash;
}

Random::Random(quint64 seed)
    : m_state(seed)
{ }

quint64 Random::next()
{
    m_state += 0x9E3779B97F4A7C15U;
    quint64 value = m_state;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31);
}

double Random::unit()
{
    return static_cast<double>(next() >> 11) / 9007199254740992.0;
}

double Random::between(double from, double to)
{
    return from + (to - from) * unit();
}

int Random::below(int count)
{
    return static_cast<int>(next() % static_cast<quint64>(count));
}

bool Random::chance(double probability)
{
    return unit() < probability;
}

} // namespace tavro::assistantservice
