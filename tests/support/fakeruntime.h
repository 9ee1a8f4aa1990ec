#pragma once

#include "support/fakedispatcher.h"
#include "zvruntime/izvruntime.h"

#include <QByteArray>
#include <QHash>
#include <QVector>

#include <atomic>
#include <mutex>
#include <vector>

namespace tavro::testsupport {

/// A host runtime whose answers a test sets and whose use it can look at. May be used from any thread.
class FakeRuntime : public IZVRuntime {
public:
    struct Roles {
        bool server = false;
        bool client = false;
        bool local = true;
    };

    /// One use of the message operations.
    struct Call {
        enum class Kind { Register, Unregister, ToServer, ToClients };

        Kind kind;
        QByteArray name;
        QByteArray payload;
        bool dataWasNull = true;
        unsigned int size = 0;
        int number = 0; ///< see nextEventNumber()
    };

    FakeRuntime() = default; ///< a single machine
    explicit FakeRuntime(Roles roles) { setRoles(roles); }

    void setRoles(Roles roles);
    void setNeedsDispatch(bool needed) { m_needsDispatch = needed; }
    int needsDispatchCount() const { return m_needsDispatchCount; }
    QByteArray needsDispatchFile() const; ///< as given with the last question
    int needsDispatchLine() const;
    FakeDispatcher &fakeDispatcher() { return m_dispatcher; }

    QVector<Call> calls() const;
    QVector<Call> calls(Call::Kind kind) const;
    QVector<QByteArray> names(Call::Kind kind) const;
    bool isRegistered(const QByteArray &name) const;

    /// Hands a message to its handler on the calling thread; false where none is registered.
    bool deliver(const QByteArray &name, const QByteArray &payload = {});

    void registerCallHandler(const char *name, CallHandler handler) override;
    void unregisterCallHandler(const char *name) override;
    void sendToServer(const char *name, const char *data, unsigned int size) override;
    void sendToClients(const char *name, const char *data, unsigned int size) override;
    bool isProxyServer() const override { return m_server; }
    bool isProxyClient() const override { return m_client; }
    bool isLocalExecutor() const override { return m_local; }
    IZVDispatcher &dispatcher() override { return m_dispatcher; }
    bool needsDispatch(const char *file, int line) const override;

private:
    void note(Call::Kind kind, const char *name, const char *data = nullptr, unsigned int size = 0);

    std::atomic_bool m_server{false};
    std::atomic_bool m_client{false};
    std::atomic_bool m_local{true};
    std::atomic_bool m_needsDispatch{false};
    mutable std::atomic_int m_needsDispatchCount{0};
    mutable std::mutex m_mutex;
    mutable QByteArray m_file;
    mutable int m_line = 0;
    std::vector<Call> m_calls;
    QHash<QByteArray, CallHandler> m_handlers;
    FakeDispatcher m_dispatcher;
};

} // namespace tavro::testsupport
