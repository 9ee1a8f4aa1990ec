#pragma once

#include "machine/roles.h"
#include "zvruntime/izvruntime.h"

#include <QObject>
#include <QString>

#include <memory>

namespace tavro::runtime {

/// What the runtimes of this folder have in common: the handlers, the way to the host's thread, and what an operator
/// wants to know about the connection between the machines.
///
/// The thread in which the object lives is the host's own: handlers are called and signals are emitted there, by its
/// event loop and never inside another call. So nothing is missed where handlers and signals are connected before the
/// thread returns to its event loop. A handler that runs an event loop of its own is no obstacle: messages go on being
/// delivered inside it.
///
/// The operations of IZVRuntime may be called from any thread, the others from the object's own thread. A handler may
/// unregister any handler and destroy the runtime.
class MachineRuntime : public QObject, public IZVRuntime {
    Q_OBJECT

public:
    /// How this machine stands to the others.
    enum class Connection {
        Disconnected, ///< not reached or lost; it is tried again for ever
        Connecting, ///< the first attempt is under way
        Connected,
        Refused, ///< reached, but not let in (credentials, TLS); it is tried again for ever
    };
    Q_ENUM(Connection)

    ~MachineRuntime() override;

    /// The state as its thread has heard of it: it changes while the thread's event loop runs.
    Connection connection() const;
    /// The state in a sentence for the operator. Never holds a credential. Empty until the event loop has run once.
    QString connectionText() const;

    /// Whether a serving machine is known to be there: another one, or this one. False while not connected.
    bool isServerPresent() const;
    /// Whether this machine serves its group. Where it has the role but another machine serves already, it stands by:
    /// it receives no calls, what it sends to the clients is refused (see sigMessageLost()), and it takes over once
    /// the other machine is gone.
    bool isServing() const;
    /// The name of the machine that serves in place of this one; empty where this one serves or has not the role.
    QString anotherServer() const;

    void registerCallHandler(const char *name, CallHandler handler) override;
    void unregisterCallHandler(const char *name) override;
    bool isProxyServer() const override;
    bool isProxyClient() const override;
    bool isLocalExecutor() const override;
    IZVDispatcher &dispatcher() override;
    bool needsDispatch(const char *file, int line) const override;

Q_SIGNALS:
    /// The state is another one, or has another text; see connectionText().
    void sigConnectionChanged(tavro::runtime::MachineRuntime::Connection connection, const QString &text);
    void sigServerPresentChanged(bool present); ///< see isServerPresent()
    void sigServingChanged(bool serving); ///< see isServing()
    /// Another machine of the group serves already; see isServing(). @p name is empty once that is over.
    void sigAnotherServer(const QString &name);
    /// A message that this machine sent did not go out, or no serving machine took it. @p name is the message's, and
    /// empty for what the broker forbids beyond messages (to listen, to say who serves); @p reason is for the operator.
    /// Messages that were on their way when a connection broke are not reported: nobody can know.
    void sigMessageLost(const QString &name, const QString &reason);

protected:
    class Private;
    explicit MachineRuntime(Roles roles); ///< for the runtimes of this folder
    Private &common() const { return *d; } ///< what they share

private:
    std::unique_ptr<Private> d;
};

} // namespace tavro::runtime
