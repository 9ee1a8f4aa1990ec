// A call to the serving machine and its completion back, beside the same bytes there and back with the NATS library
// alone.

#include "eventloop.h"
#include "inprocess/inprocessruntime.h"
#include "nats/natshandles.h"
#include "nats/natsruntime.h"
#include "support/natsserver.h"

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>

namespace tavro::runtime {

namespace {

using aiassistant::processEventsUntil;

// A question of usual length, packed.
const QByteArray payload(200, 'x');

testsupport::NatsServer &broker()
{
    static testsupport::NatsServer server;
    static const bool isStarted = server.start();
    if (!isStarted)
        qFatal("nats-server does not start: %s", qPrintable(server.errorText()));
    return server;
}

void roundTrips(benchmark::State &state, MachineRuntime &server, MachineRuntime &client)
{
    bool isBack = false;
    server.registerCallHandler("Call", [&server](const char *, const char *data, unsigned int size) {
        server.sendToClients("Finished", data, size);
    });
    client.registerCallHandler("Finished", [&isBack](const char *, const char *, unsigned int) { isBack = true; });
    processEventsUntil([&client] { return client.isServerPresent(); });
    for ([[maybe_unused]] auto iteration : state) {
        isBack = false;
        client.sendToServer("Call", payload.constData(), static_cast<unsigned int>(payload.size()));
        processEventsUntil([&isBack] { return isBack; });
    }
}

void inProcessRoundTrip(benchmark::State &state)
{
    InProcessBus bus;
    InProcessRuntime server(bus, Role::ProxyServer);
    InProcessRuntime client(bus, Role::ProxyClient);
    roundTrips(state, server, client);
}

void natsRoundTrip(benchmark::State &state)
{
    NatsOptions options;
    options.servers = QStringList{broker().url()};
    NatsRuntime server(Role::ProxyServer, options);
    NatsRuntime client(Role::ProxyClient, options);
    roundTrips(state, server, client);
}

/// One end of a connection that is used as the library's manual has it.
class BareEnd {
public:
    BareEnd(const char *subject, natsMsgHandler handler, void *closure)
    {
        natsOptions *options = nullptr;
        natsOptions_Create(&options);
        const NatsPointer<natsOptions> owned(options);
        natsOptions_SetURL(options, broker().url().toUtf8().constData());
        natsOptions_SetSendAsap(options, true);
        natsOptions_SetNoEcho(options, true);
        natsConnection *connection = nullptr;
        natsConnection_Connect(&connection, options);
        m_connection.reset(connection);
        natsSubscription *subscription = nullptr;
        natsConnection_Subscribe(&subscription, connection, subject, handler, closure);
        m_subscription.reset(subscription);
        natsConnection_Flush(connection);
    }

    void send(const char *subject)
    {
        natsConnection_Publish(m_connection.get(), subject, payload.constData(), payload.size());
    }

private:
    NatsPointer<natsConnection> m_connection;
    NatsPointer<natsSubscription> m_subscription;
};

struct Arrival {
    void announce()
    {
        const std::lock_guard lock(mutex);
        hasCome = true;
        changed.notify_one();
    }
    void wait()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return hasCome; });
        hasCome = false;
    }

    std::mutex mutex;
    std::condition_variable changed;
    bool hasCome = false;
};

void onCall(natsConnection *connection, natsSubscription *, natsMsg *message, void *)
{
    const NatsPointer<natsMsg> owned(message);
    natsConnection_Publish(connection, "bare.default.clients.Finished", natsMsg_GetData(message),
                           natsMsg_GetDataLength(message));
}

void onFinished(natsConnection *, natsSubscription *, natsMsg *message, void *closure)
{
    natsMsg_Destroy(message);
    static_cast<Arrival *>(closure)->announce();
}

void bareRoundTrip(benchmark::State &state)
{
    static Arrival arrival; // a callback may still be in it when the connections are gone
    BareEnd server("bare.default.server.*", onCall, nullptr);
    BareEnd client("bare.default.clients.*", onFinished, &arrival);
    for ([[maybe_unused]] auto iteration : state) {
        client.send("bare.default.server.Call");
        arrival.wait();
    }
}

BENCHMARK(inProcessRoundTrip)->UseRealTime();
BENCHMARK(natsRoundTrip)->UseRealTime();
BENCHMARK(bareRoundTrip)->UseRealTime();

} // namespace

} // namespace tavro::runtime
