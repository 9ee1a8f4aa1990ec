#include "input.h"

Input::Input(const std::uint8_t *data, std::size_t size)
    : m_data(data)
    , m_size(size)
{ }

std::uint8_t Input::byte()
{
    if (m_size == 0)
        return 0;
    --m_size;
    return *m_data++;
}

QByteArray Input::rest() const
{
    return {reinterpret_cast<const char *>(m_data), static_cast<int>(m_size)};
}

QString Input::text() const
{
    return QString::fromUtf8(reinterpret_cast<const char *>(m_data), static_cast<int>(m_size));
}
