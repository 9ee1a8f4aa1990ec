#pragma once

#include "zvruntime/izvruntime.h"

#include <QByteArray>
#include <QObject>

#include <atomic>

namespace tavro::playout {

/// A runtime on its way to a controller: it does what @p inner does, and tells this host what passes.
class WatchedRuntime : public QObject, public IZVRuntime {
    Q_OBJECT

public:
    /// @p inner must outlive the object.
    explicit WatchedRuntime(IZVRuntime &inner);

    /// False: the controller is told that it serves nobody, so that its outcomes stay with it.
    void setServing(bool serving) { m_serving = serving; }

    void registerCallHandler(const char *name, CallHandler handler) override;
    void unregisterCallHandler(const char *name) override;
    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;
    bool isProxyServer() const override;
    bool isProxyClient() const override;
    bool isLocalExecutor() const override;
    IZVDispatcher &dispatcher() override;
    bool needsDispatch(const char *file, int line) const override;

Q_SIGNALS:
    void sigReceived(const QByteArray &name); ///< before the controller gets the message
    void sigSent(const QByteArray &name, const QByteArray &payload); ///< after it was sent, on the sender's thread

private:
    IZVRuntime &m_inner;
    std::atomic<bool> m_serving{true};
};

} // namespace tavro::playout
