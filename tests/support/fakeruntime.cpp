#include "support/fakeruntime.h"

#include "support/signalrecorder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tavro::testsupport {

void FakeRuntime::setRoles(Roles roles)
{
    m_server = roles.server;
    m_client = roles.client;
    m_local = roles.local;
}

QByteArray FakeRuntime::needsDispatchFile() const
{
    const std::lock_guard lock(m_mutex);
    return m_file;
}

int FakeRuntime::needsDispatchLine() const
{
    const std::lock_guard lock(m_mutex);
    return m_line;
}

QVector<FakeRuntime::Call> FakeRuntime::calls() const
{
    const std::lock_guard lock(m_mutex);
    return {m_calls.cbegin(), m_calls.cend()};
}

QVector<FakeRuntime::Call> FakeRuntime::calls(Call::Kind kind) const
{
    QVector<Call> found;
    const QVector<Call> all = calls();
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(found),
                 [=](const Call &call) { return call.kind == kind; });
    return found;
}

QVector<QByteArray> FakeRuntime::names(Call::Kind kind) const
{
    QVector<QByteArray> names;
    const QVector<Call> found = calls(kind);
    for (const Call &call : found)
        names.append(call.name);
    return names;
}

bool FakeRuntime::isRegistered(const QByteArray &name) const
{
    const std::lock_guard lock(m_mutex);
    return m_handlers.contains(name);
}

bool FakeRuntime::deliver(const QByteArray &name, const QByteArray &payload)
{
    CallHandler handler;
    {
        const std::lock_guard lock(m_mutex);
        handler = m_handlers.value(name);
    }
    if (!handler)
        return false;
    handler(name.constData(), payload.isEmpty() ? nullptr : payload.constData(),
            static_cast<unsigned int>(payload.size()));
    return true;
}

void FakeRuntime::registerCallHandler(const char *name, CallHandler handler)
{
    note(Call::Kind::Register, name);
    const std::lock_guard lock(m_mutex);
    m_handlers.insert(name, std::move(handler));
}

void FakeRuntime::unregisterCallHandler(const char *name)
{
    note(Call::Kind::Unregister, name);
    const std::lock_guard lock(m_mutex);
    m_handlers.remove(name);
}

void FakeRuntime::sendToServer(const char *name, const char *data, unsigned int size)
{
    note(Call::Kind::ToServer, name, data, size);
}

void FakeRuntime::sendToClients(const char *name, const char *data, unsigned int size)
{
    note(Call::Kind::ToClients, name, data, size);
}

bool FakeRuntime::needsDispatch(const char *file, int line) const
{
    ++m_needsDispatchCount;
    const std::lock_guard lock(m_mutex);
    m_file = file;
    m_line = line;
    return m_needsDispatch;
}

void FakeRuntime::note(Call::Kind kind, const char *name, const char *data, unsigned int size)
{
    const std::lock_guard lock(m_mutex);
    m_calls.push_back({kind, name, QByteArray(data, static_cast<int>(size)), data == nullptr, size, nextEventNumber()});
}

} // namespace tavro::testsupport
