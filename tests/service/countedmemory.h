#pragma once

#include <QtGlobal>

/// Counts the memory that this program takes, whoever in it takes it: the C++ library, Qt, any other library.
class CountedMemory {
public:
    /// From here on.
    CountedMemory();
    /// Lifts the limit.
    ~CountedMemory();
    CountedMemory(const CountedMemory &) = delete;
    CountedMemory &operator=(const CountedMemory &) = delete;

    /// From now on there is no more than that beyond what was held at the start. False where that cannot be done.
    bool limit(qint64 bytes);

    /// Bytes in use now beyond those at the start.
    qint64 held() const;
    /// The most that were in use at once since the start, beyond those at the start.
    qint64 peak() const;

private:
    const qint64 m_atStart;
};
