#pragma once

#include "zvruntime/izvruntime.h"

#include <QObject>

namespace tavro::playout {

/// Runs tasks in the event loop of the thread that made it, here the GUI thread. Tasks that still wait when it goes are
/// destroyed.
class GuiDispatcher : public QObject, public IZVDispatcher {
    Q_OBJECT

public:
    void post(std::function<void()> task) override;
};

/// The runtime of a machine on its own: it carries everything out itself, and there is nobody to send to.
class LocalRuntime : public IZVRuntime {
public:
    void registerCallHandler(const char * /*name*/, CallHandler /*handler*/) override { }
    void unregisterCallHandler(const char * /*name*/) override { }
    void sendToServer(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) override { }
    void sendToClients(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) override { }

    bool isProxyServer() const override { return false; }
    bool isProxyClient() const override { return false; }
    bool isLocalExecutor() const override { return true; }

    IZVDispatcher &dispatcher() override { return m_dispatcher; }
    bool needsDispatch(const char *file, int line) const override;

private:
    GuiDispatcher m_dispatcher;
};

} // namespace tavro::playout
