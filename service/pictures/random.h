#pragma once

#include <QString>

namespace tavro::assistantservice {

/// A number that depends on the text alone, on every machine and in every run.
quint64 hashOf(const QString &text);

/// Random numbers that are the same for the same seed, on every machine and in every run.
class Random {
public:
    explicit Random(quint64 seed);

    /// From 0 up to, but without, 1.
    double unit();
    double between(double from, double to);
    /// From 0 to `count` - 1.
    int below(int count);
    bool chance(double probability);

private:
    quint64 next();

    quint64 m_state;
};

} // namespace tavro::assistantservice
