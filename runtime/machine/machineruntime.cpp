#include "machine/machineruntime.h"

#include "machine/loggingcategories.h"
#include "machine/machineruntime_p.h"

#include <QPointer>

#include <utility>

namespace tavro::runtime {

MachineRuntime::Private::Private(MachineRuntime *owner, Roles ownRoles)
    : q(owner)
    , roles(ownRoles)
    , dispatcher(new QtDispatcher(owner))
{ }

void MachineRuntime::Private::showConnection(Connection newConnection, const std::string &text)
{
    dispatcher->post([this, newConnection, text] { setConnection(newConnection, QString::fromStdString(text)); });
}

void MachineRuntime::Private::showPresence(const Presence &newPresence)
{
    dispatcher->post([this, newPresence] { setPresence(newPresence); });
}

void MachineRuntime::Private::reportLost(const std::string &name, const std::string &reason)
{
    dispatcher->post([this, name, reason] {
        qCWarning(lcRuntime, "lost %s: %s", name.c_str(), reason.c_str());
        Q_EMIT q->sigMessageLost(QString::fromStdString(name), QString::fromStdString(reason));
    });
}

void MachineRuntime::Private::setConnection(Connection newConnection, const QString &text)
{
    if (std::exchange(connection, newConnection) == newConnection && connectionText == text)
        return;
    connectionText = text;
    if (newConnection == Connection::Connected || newConnection == Connection::Connecting)
        qCInfo(lcRuntime, "%s", qUtf8Printable(text));
    else
        qCWarning(lcRuntime, "%s", qUtf8Printable(text));
    Q_EMIT q->sigConnectionChanged(newConnection, text);
}

// A slot may destroy the runtime.
void MachineRuntime::Private::setPresence(const Presence &newPresence)
{
    const Presence old = std::exchange(presence, newPresence);
    const QPointer<MachineRuntime> alive(q);
    MachineRuntime *const runtime = q;
    if (old.serverPresent != newPresence.serverPresent)
        Q_EMIT runtime->sigServerPresentChanged(newPresence.serverPresent);
    if (alive && old.serving != newPresence.serving)
        Q_EMIT runtime->sigServingChanged(newPresence.serving);
    if (!alive || old.anotherServer == newPresence.anotherServer)
        return;
    if (!newPresence.anotherServer.empty())
        qCWarning(lcRuntime, "standing by: %s serves the group already", newPresence.anotherServer.c_str());
    Q_EMIT runtime->sigAnotherServer(QString::fromStdString(newPresence.anotherServer));
}

MachineRuntime::MachineRuntime(Roles roles)
    : d(std::make_unique<Private>(this, roles))
{
    // For connections across threads.
    qRegisterMetaType<Connection>();
}

MachineRuntime::~MachineRuntime()
{
    // The tasks that wait know the private part. Another thread may still hold the handlers for a moment, and what they
    // hold is to go here.
    d->dispatcher->line()->close();
    d->handlers->clear();
}

MachineRuntime::Connection MachineRuntime::connection() const
{
    return d->connection;
}

QString MachineRuntime::connectionText() const
{
    return d->connectionText;
}

bool MachineRuntime::isServerPresent() const
{
    return d->presence.serverPresent;
}

bool MachineRuntime::isServing() const
{
    return d->presence.serving;
}

QString MachineRuntime::anotherServer() const
{
    return QString::fromStdString(d->presence.anotherServer);
}

void MachineRuntime::registerCallHandler(const char *name, CallHandler handler)
{
    d->handlers->set(name, std::move(handler));
}

void MachineRuntime::unregisterCallHandler(const char *name)
{
    d->handlers->remove(name);
}

bool MachineRuntime::isProxyServer() const
{
    return d->roles.testFlag(Role::ProxyServer);
}

bool MachineRuntime::isProxyClient() const
{
    return d->roles.testFlag(Role::ProxyClient);
}

bool MachineRuntime::isLocalExecutor() const
{
    return d->roles.testFlag(Role::LocalExecutor);
}

IZVDispatcher &MachineRuntime::dispatcher()
{
    return *d->dispatcher;
}

bool MachineRuntime::needsDispatch(const char * /*file*/, int /*line*/) const
{
    return !d->dispatcher->isOwnThread();
}

} // namespace tavro::runtime
