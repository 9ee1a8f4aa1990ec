#pragma once

#include "nats/natsoptions.h"

#include <nats/nats.h>

namespace tavro::runtime {

/// Keeps the first failure of a row of calls.
class NatsSteps {
public:
    NatsSteps &operator<<(natsStatus status)
    {
        m_status = m_status == NATS_OK ? status : m_status;
        return *this;
    }
    natsStatus status() const { return m_status; }

private:
    natsStatus m_status = NATS_OK;
};

/// Sets on @p out all that one connection to @p server needs, but TLS and the callbacks.
natsStatus setConnectionOptions(natsOptions *out, const NatsOptions &options, const QString &server);

/// Fails where the authorities' file cannot be used.
natsStatus setTls(natsOptions *out, const NatsOptions &options, const QString &server);

} // namespace tavro::runtime
