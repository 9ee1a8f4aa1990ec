#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

/// The bytes of one input, taken apart from the front.
class Input {
public:
    Input(const std::uint8_t *data, std::size_t size);

    /// The next byte; 0 behind the end.
    std::uint8_t byte();

    /// What is left, in memory of its own size: reading beyond its end is seen.
    QByteArray rest() const;
    QString text() const; ///< the same as UTF-8

private:
    const std::uint8_t *m_data;
    std::size_t m_size;
};
