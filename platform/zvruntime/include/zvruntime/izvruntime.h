#pragma once

#include <functional>

namespace tavro {

/// Runs tasks on the host's own thread, the one on which the host's data may be read.
///
/// Implemented by the host. post() is called from any thread.
class IZVDispatcher {
public:
    virtual ~IZVDispatcher() = default;

    /// Queues @p task and returns at once; the host's thread runs the tasks in the order in which they were posted.
    ///
    /// Callers may block until their task has run, so a host must never wait for the assistant on its own thread. A
    /// task that will not be run any more (the host is shutting down) must be destroyed, not kept: its caller is then
    /// told.
    /// @p task is never empty and does not throw.
    virtual void post(std::function<void()> task) = 0;
};

/// The host's runtime: which part this machine plays when several machines share one assistant, the messages between
/// these machines, and the host's thread.
///
/// Implemented by the host, handed to the assistant by IAiController::setZVRuntime() and never owned by it: a runtime
/// must outlive every controller that was given it. The order of the virtual operations is part of the interface; new
/// ones are added at the end only.
///
/// Every operation may be called from any thread. None may throw.
class IZVRuntime {
public:
    /// Receives one message: its name, and its payload of @p size bytes at @p data. Both pointers are valid only during
    /// the call. A message without a payload has size 0, and @p data is then null.
    using CallHandler = std::function<void(const char *name, const char *data, unsigned int size)>;

    virtual ~IZVRuntime() = default;

    /// Subscribes @p handler to the messages with the NUL-terminated @p name, in place of an earlier handler of that
    /// name.
    ///
    /// The runtime decides on which thread it calls the handler, but calls one handler at a time and keeps the order in
    /// which one machine sent.
    virtual void registerCallHandler(const char *name, CallHandler handler) = 0;

    /// Drops the subscription to @p name; a name without one is ignored. When it returns, the handler is not running on
    /// another thread and is not called again.
    virtual void unregisterCallHandler(const char *name) = 0;

    /// Sends a message from a client machine to the serving machine. The bytes are copied or sent before it returns.
    /// @p data may be null when @p size is 0. Delivery is not acknowledged.
    virtual void sendToServer(const char *name, const char *data, unsigned int size) = 0;

    /// Sends a message from the serving machine to all client machines, by the rules of sendToServer(). A machine never
    /// receives its own messages.
    virtual void sendToClients(const char *name, const char *data, unsigned int size) = 0;

    /// True where this machine talks to the AI service for other machines as well.
    virtual bool isProxyServer() const = 0;

    /// True where this machine only shows the assistant and has its operations carried out by the serving machine.
    virtual bool isProxyClient() const = 0;

    /// True where this machine carries out the user's operations itself and announces their outcome. A single machine
    /// answers true here and false to the two roles above; a machine may hold several roles at once.
    virtual bool isLocalExecutor() const = 0;

    /// The way to the host's own thread. The reference stays valid as long as the runtime.
    virtual IZVDispatcher &dispatcher() = 0;

    /// True where the calling thread is not the host's own, so that work on host data must go through dispatcher().
    /// @p file and @p line are the place of the question, for the host's diagnostics.
    virtual bool needsDispatch(const char *file, int line) const = 0;
};

} // namespace tavro
