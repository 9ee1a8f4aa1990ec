#pragma once

#include "zvruntime/izvruntime.h"

#include <QObject>

namespace tavro::consolehost {

/// Runs tasks in the event loop of the thread that made it. Tasks that are still queued when it goes are destroyed.
class EventLoopDispatcher : public QObject, public IZVDispatcher {
public:
    void post(std::function<void()> task) override;
};

/// The runtime of a machine that shares its assistant with no other: it does everything itself and has nobody to send
/// to. The thread that makes it is the host's own.
class LocalRuntime : public IZVRuntime {
public:
    void registerCallHandler(const char *name, CallHandler handler) override;
    void unregisterCallHandler(const char *name) override;
    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;

    bool isProxyServer() const override { return false; }
    bool isProxyClient() const override { return false; }
    bool isLocalExecutor() const override { return true; }

    IZVDispatcher &dispatcher() override { return m_dispatcher; }
    bool needsDispatch(const char *file, int line) const override;

private:
    EventLoopDispatcher m_dispatcher;
};

} // namespace tavro::consolehost
