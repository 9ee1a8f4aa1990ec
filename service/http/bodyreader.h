#pragma once

#include "serviceerror.h"

#include <httplib.h>

#include <QByteArray>

namespace tavro::assistantservice {

/// Reads one request body up to a limit. A longer one is read on for a while and thrown away: a client that is still
/// sending when the connection closes would not see the reply.
class BodyReader {
public:
    explicit BodyReader(qint64 limit);

    ServiceError read(const httplib::ContentReader &reader);
    const QByteArray &bytes() const { return m_bytes; }

private:
    bool take(const char *data, size_t size);

    const qint64 m_limit;
    qint64 m_received = 0;
    QByteArray m_bytes;
};

} // namespace tavro::assistantservice
