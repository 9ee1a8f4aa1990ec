#include "http/bodyreader.h"

#include "http/bodyhead.h"

namespace tavro::assistantservice {

namespace {

constexpr qint64 thrownAwayAtMost = 64 * 1024 * 1024;

} // namespace

BodyReader::BodyReader(qint64 limit)
    : m_limit(limit)
{ }

ServiceError BodyReader::read(const httplib::ContentReader &reader)
{
    const bool whole = reader([this](const char *data, size_t size) { return take(data, size); });
    if (m_received > m_limit) {
        return bodyTooLarge(m_limit);
    }
    if (!whole) {
        return {ErrorCode::BadRequest, QStringLiteral("The request did not arrive whole or in time.")};
    }
    return {};
}

bool BodyReader::take(const char *data, size_t size)
{
    m_received += static_cast<qint64>(size);
    if (m_received <= m_limit) {
        m_bytes.append(data, static_cast<int>(size));
    } else {
        m_bytes.clear();
    }
    return m_received <= m_limit + thrownAwayAtMost;
}

} // namespace tavro::assistantservice
