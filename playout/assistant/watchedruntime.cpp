#include "assistant/watchedruntime.h"

#include <utility>

namespace tavro::playout {

WatchedRuntime::WatchedRuntime(IZVRuntime &inner)
    : m_inner(inner)
{ }

void WatchedRuntime::registerCallHandler(const char *name, CallHandler handler)
{
    m_inner.registerCallHandler(
        name, [this, handler = std::move(handler)](const char *received, const char *data, unsigned int size) {
            Q_EMIT sigReceived(received);
            handler(received, data, size);
        });
}

void WatchedRuntime::unregisterCallHandler(const char *name)
{
    m_inner.unregisterCallHandler(name);
}

void WatchedRuntime::sendToServer(const char *name, const char *data, unsigned int size)
{
    m_inner.sendToServer(name, data, size);
    Q_EMIT sigSent(name, QByteArray(data, static_cast<int>(size)));
}

void WatchedRuntime::sendToClients(const char *name, const char *data, unsigned int size)
{
    m_inner.sendToClients(name, data, size);
    Q_EMIT sigSent(name, QByteArray(data, static_cast<int>(size)));
}

bool WatchedRuntime::isProxyServer() const
{
    return m_serving && m_inner.isProxyServer();
}

bool WatchedRuntime::isProxyClient() const
{
    return m_inner.isProxyClient();
}

bool WatchedRuntime::isLocalExecutor() const
{
    return m_inner.isLocalExecutor();
}

IZVDispatcher &WatchedRuntime::dispatcher()
{
    return m_inner.dispatcher();
}

bool WatchedRuntime::needsDispatch(const char *file, int line) const
{
    return m_inner.needsDispatch(file, line);
}

} // namespace tavro::playout
