#pragma once

#include "serviceerror.h"

#include <QByteArray>

#include <set>

namespace tavro::assistantservice {

class BodyBudget;

/// One request body on its way in. What is too much is read on for a while and thrown away: a client that is still
/// sending when the connection closes would not see the reply.
class RequestBody {
public:
    explicit RequestBody(BodyBudget &budget);
    ~RequestBody();
    RequestBody(const RequestBody &) = delete;
    RequestBody &operator=(const RequestBody &) = delete;

    /// False where no more of the body is worth waiting for.
    bool take(const char *data, size_t size);

    /// Why the body does not count; no error where it does.
    ServiceError error() const;
    const QByteArray &bytes() const { return m_bytes; }
    /// Bytes that came, also those that were thrown away.
    qint64 received() const { return m_received; }

private:
    friend class BodyBudget;

    void drop();

    BodyBudget &m_budget;
    QByteArray m_bytes;
    qint64 m_received = 0;
    bool m_madeRoom = false;
};

/// The memory that all bodies on their way in share. Where it is short the largest body makes room for the others, so
/// that whoever sends the most loses. Not for use from several threads.
class BodyBudget {
public:
    /// @p largest bytes for one body, @p together for all; the latter is at least as large.
    BodyBudget(qint64 largest, qint64 together);

    qint64 largestBody() const { return m_largest; }
    /// What all bodies hold now.
    qint64 used() const { return m_used; }

private:
    friend class RequestBody;

    void add(RequestBody &body, qint64 size);
    void remove(RequestBody &body);

    const qint64 m_largest;
    const qint64 m_together;
    qint64 m_used = 0;
    std::set<RequestBody *> m_bodies;
};

} // namespace tavro::assistantservice
