#include "support/serverbook.h"

namespace tavro::testsupport {

namespace {

// A test that acts first and scripts the answer then is slower than the request on some days.
constexpr std::chrono::seconds patience{5};

QByteArray keyOf(const QByteArray &method, const QByteArray &target)
{
    return method + ' ' + target;
}

} // namespace

template <typename Read>
auto ServerBook::locked(Read read) const
{
    const std::lock_guard lock(m_mutex);
    return read();
}

void ServerBook::expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer)
{
    const std::lock_guard lock(m_mutex);
    m_steps[keyOf(method, target)].append(answer);
    m_changed.notify_all();
}

void ServerBook::always(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer)
{
    const std::lock_guard lock(m_mutex);
    m_defaults.insert(keyOf(method, target), answer);
    m_changed.notify_all();
}

ScriptedAnswer ServerBook::answerTo(const HttpRequest &request)
{
    std::unique_lock lock(m_mutex);
    note(request);
    const QByteArray key = keyOf(request.method, request.target);
    m_changed.wait_for(lock, patience, [&] { return !m_steps.value(key).isEmpty() || m_defaults.contains(key); });
    const auto steps = m_steps.find(key);
    if (steps != m_steps.end() && !steps->isEmpty())
        return steps->takeFirst();
    if (m_defaults.contains(key))
        return m_defaults.value(key);
    m_complaints.push_back(QStringLiteral("not announced: %1").arg(QString::fromUtf8(key)));
    return ScriptedAnswer::status(404);
}

void ServerBook::note(const HttpRequest &request)
{
    m_requests.push_back(request);
    m_changed.notify_all();
}

int ServerBook::openConnection()
{
    const std::lock_guard lock(m_mutex);
    ++m_open;
    return ++m_opened;
}

void ServerBook::closeConnection()
{
    const std::lock_guard lock(m_mutex);
    --m_open;
}

void ServerBook::changeHeld(int difference)
{
    const std::lock_guard lock(m_mutex);
    m_held += difference;
}

void ServerBook::noteTaken(qint64 bytes)
{
    const std::lock_guard lock(m_mutex);
    m_taken += bytes;
}

void ServerBook::complain(const QString &what)
{
    const std::lock_guard lock(m_mutex);
    m_complaints.push_back(what);
}

QVector<HttpRequest> ServerBook::requests() const
{
    return locked([this] { return QVector<HttpRequest>(m_requests.cbegin(), m_requests.cend()); });
}

int ServerBook::requestCount() const
{
    return locked([this] { return static_cast<int>(m_requests.size()); });
}

bool ServerBook::waitForRequests(int count, std::chrono::milliseconds limit) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, limit, [=] { return static_cast<int>(m_requests.size()) >= count; });
}

int ServerBook::connectionsOpened() const
{
    return locked([this] { return m_opened; });
}

int ServerBook::connectionsOpen() const
{
    return locked([this] { return m_open; });
}

qint64 ServerBook::bytesTaken() const
{
    return locked([this] { return m_taken; });
}

int ServerBook::heldCount() const
{
    return locked([this] { return m_held; });
}

QStringList ServerBook::leftovers() const
{
    const std::lock_guard lock(m_mutex);
    QStringList left(m_complaints.cbegin(), m_complaints.cend());
    for (auto steps = m_steps.cbegin(); steps != m_steps.cend(); ++steps) {
        if (!steps->isEmpty())
            left.append(QStringLiteral("never asked for: %1 (%2 times)")
                            .arg(QString::fromUtf8(steps.key()))
                            .arg(steps->size()));
    }
    if (m_held > 0)
        left.append(QStringLiteral("still held: %1 answers").arg(m_held));
    return left;
}

} // namespace tavro::testsupport
