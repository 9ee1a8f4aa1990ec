// What every runtime promises of the handlers: where they run, and what may happen to them while messages are on their
// way.

#include "support/logcatcher.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QEventLoop>
#include <QTest>

#include <atomic>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

using namespace tavro;
using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_RuntimeHandlers : public GroupTest {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void handlerRunsOnTheOwnersThread();
    void handlerRunsOnTheThreadOfAWorker();
    void handlerIsNotCalledInsideASend();
    void laterHandlerReplacesTheEarlier();
    void unregisteringAnUnknownNameIsIgnored();
    void nothingIsDeliveredAfterUnregistering();
    void handlerMayUnregisterItself();
    void unregisteringWaitsForTheHandlerOnAnotherThread();
    void messagesGoOnInAHandlersEventLoop();
    void runtimeMayGoWithMessagesOnTheirWay();
    void handlerMayDestroyItsRuntime();
    void dispatcherRunsTasksInOrderOnTheHostsThread();
    void tasksThatWaitAreDestroyedWithTheRuntime();
    void runtimesMayComeAndGoWhileOthersSend();

private:
    void send(const char *name) { m_client->sendToServer(name, "x", 1); }
    bool sendAndWaitFor(const char *name);

    std::unique_ptr<MachineRuntime> m_server;
    std::unique_ptr<MachineRuntime> m_client;
};

void tst_RuntimeHandlers::init()
{
    openGroup();
    if (QTest::currentTestFailed())
        return;
    m_server = m_group->join(Role::ProxyServer);
    QVERIFY(isReady(*m_server, true));
    m_client = m_group->join(Role::ProxyClient);
    QVERIFY(isReady(*m_client));
}

void tst_RuntimeHandlers::cleanup()
{
    m_client.reset();
    m_server.reset();
    closeGroup();
}

bool tst_RuntimeHandlers::sendAndWaitFor(const char *name)
{
    bool came = false;
    m_server->registerCallHandler(name, [&came](const char *, const char *, unsigned int) { came = true; });
    send(name);
    const bool isThere = eventually([&came] { return came; });
    m_server->unregisterCallHandler(name);
    return isThere;
}

void tst_RuntimeHandlers::handlerRunsOnTheOwnersThread()
{
    std::thread::id thread;
    const auto note = [&thread](const char *, const char *, unsigned int) { thread = std::this_thread::get_id(); };
    m_server->registerCallHandler("Where", note);
    std::thread sender([this] { send("Where"); });
    const bool came = eventually([&thread] { return thread != std::thread::id(); });
    sender.join();
    QVERIFY(came);
    QCOMPARE(thread, std::this_thread::get_id());
}

void tst_RuntimeHandlers::handlerRunsOnTheThreadOfAWorker()
{
    std::promise<bool> ready;
    std::promise<std::thread::id> where;
    std::thread worker([&] {
        QEventLoop loop;
        const auto client = m_group->join(Role::ProxyClient);
        client->registerCallHandler("Where", [&](const char *, const char *, unsigned int) {
            where.set_value(std::this_thread::get_id());
            loop.quit();
        });
        const bool isClientReady = isReady(*client) && !client->needsDispatch(__FILE__, __LINE__);
        ready.set_value(isClientReady);
        if (isClientReady)
            loop.exec();
    });
    const std::thread::id expected = worker.get_id();
    const bool isWorkerReady = ready.get_future().get();
    if (isWorkerReady)
        m_server->sendToClients("Where", nullptr, 0);
    worker.join();
    QVERIFY(isWorkerReady);
    QCOMPARE(where.get_future().get(), expected);
}

void tst_RuntimeHandlers::handlerIsNotCalledInsideASend()
{
    bool isSending = false;
    bool wasInside = false;
    int calls = 0;
    m_server->registerCallHandler("Nested", [&](const char *, const char *, unsigned int) {
        ++calls;
        wasInside = wasInside || isSending;
    });
    isSending = true;
    send("Nested");
    isSending = false;
    QVERIFY(eventually([&calls] { return calls == 1; }));
    QVERIFY(!wasInside);
}

void tst_RuntimeHandlers::laterHandlerReplacesTheEarlier()
{
    Receiver earlier;
    Receiver later;
    earlier.listen(*m_server, "Call");
    later.listen(*m_server, "Call");
    send("Call");
    QVERIFY(eventually([&later] { return later.count() == 1; }));
    QCOMPARE(earlier.count(), 0);
}

void tst_RuntimeHandlers::unregisteringAnUnknownNameIsIgnored()
{
    m_server->unregisterCallHandler("ClearHeaderFinished");
    QVERIFY(sendAndWaitFor("Call"));
}

void tst_RuntimeHandlers::nothingIsDeliveredAfterUnregistering()
{
    Receiver receiver;
    receiver.listen(*m_server, "Second");
    m_server->registerCallHandler(
        "First", [this](const char *, const char *, unsigned int) { m_server->unregisterCallHandler("Second"); });
    send("First");
    send("Second");
    QVERIFY(sendAndWaitFor("Third"));
    QCOMPARE(receiver.count(), 0);
}

void tst_RuntimeHandlers::handlerMayUnregisterItself()
{
    int calls = 0;
    m_server->registerCallHandler("Once", [this, &calls](const char *, const char *, unsigned int) {
        m_server->unregisterCallHandler("Once");
        ++calls;
    });
    send("Once");
    send("Once");
    QVERIFY(sendAndWaitFor("Other"));
    QCOMPARE(calls, 1);
}

// The handler gives the other thread the time to return too early.
void tst_RuntimeHandlers::unregisteringWaitsForTheHandlerOnAnotherThread()
{
    std::mutex mutex;
    std::condition_variable changed;
    bool hasReturned = false;
    bool returnedTooEarly = true;
    std::thread other;
    m_server->registerCallHandler("Slow", [&](const char *, const char *, unsigned int) {
        other = std::thread([&] {
            m_server->unregisterCallHandler("Slow");
            const std::lock_guard lock(mutex);
            hasReturned = true;
            changed.notify_all();
        });
        std::unique_lock lock(mutex);
        returnedTooEarly = changed.wait_for(lock, std::chrono::milliseconds(200), [&] { return hasReturned; });
    });
    send("Slow");
    QVERIFY(eventually([&] { return other.joinable(); }));
    other.join();
    QVERIFY(hasReturned);
    QVERIFY(!returnedTooEarly);
}

void tst_RuntimeHandlers::messagesGoOnInAHandlersEventLoop()
{
    QEventLoop loop;
    bool hasEnded = false;
    m_server->registerCallHandler("Ask", [&](const char *, const char *, unsigned int) {
        loop.exec();
        hasEnded = true;
    });
    m_server->registerCallHandler("Answer", [&loop](const char *, const char *, unsigned int) { loop.quit(); });
    send("Ask");
    send("Answer");
    QVERIFY(eventually([&hasEnded] { return hasEnded; }));
}

void tst_RuntimeHandlers::runtimeMayGoWithMessagesOnTheirWay()
{
    const auto token = std::make_shared<int>(0);
    int calls = 0;
    m_server->registerCallHandler("Call", [token, &calls](const char *, const char *, unsigned int) { ++calls; });
    for (int i = 0; i < 1000; ++i)
        send("Call");
    QVERIFY(eventually([&calls] { return calls > 0; }));
    const int before = calls;
    m_server.reset();
    QCOMPARE(token.use_count(), 1L);
    settle();
    QCOMPARE(calls, before);
}

void tst_RuntimeHandlers::handlerMayDestroyItsRuntime()
{
    m_server->registerCallHandler("Last", [this](const char *, const char *, unsigned int) { m_server.reset(); });
    send("Last");
    QVERIFY(eventually([this] { return m_server == nullptr; }));
    QVERIFY(eventually([this] { return !m_client->isServerPresent(); }));
}

void tst_RuntimeHandlers::dispatcherRunsTasksInOrderOnTheHostsThread()
{
    QVector<int> order;
    bool needed = false;
    std::thread other([&] {
        needed = m_client->needsDispatch(__FILE__, __LINE__);
        for (int i = 0; i < 3; ++i)
            m_client->dispatcher().post([&order, i] { order += i; });
    });
    const bool haveRun = eventually([&order] { return order.size() == 3; });
    other.join();
    QVERIFY(haveRun);
    QCOMPARE(order, (QVector<int>{0, 1, 2}));
    QVERIFY(needed);
    QVERIFY(!m_client->needsDispatch(__FILE__, __LINE__));
}

void tst_RuntimeHandlers::tasksThatWaitAreDestroyedWithTheRuntime()
{
    auto task = std::make_shared<std::packaged_task<int()>>([] { return 1; });
    std::future<int> result = task->get_future();
    m_client->dispatcher().post([task = std::move(task)] { (*task)(); });
    m_client.reset();
    QVERIFY_EXCEPTION_THROWN(result.get(), std::future_error);
}

void tst_RuntimeHandlers::runtimesMayComeAndGoWhileOthersSend()
{
    std::atomic_bool isEnding{false};
    std::thread sender([this, &isEnding] {
        while (!isEnding)
            m_server->sendToClients("Tick", "x", 1);
    });
    int calls = 0;
    bool haveAllReceived = true;
    for (int i = 0; i < 5 && haveAllReceived; ++i) {
        const auto client = m_group->join(Role::ProxyClient);
        const int before = calls;
        client->registerCallHandler("Tick", [&calls](const char *, const char *, unsigned int) { ++calls; });
        haveAllReceived = eventually([&] { return calls > before; });
    }
    isEnding = true;
    sender.join();
    QVERIFY(haveAllReceived);
}

QTEST_GUILESS_MAIN(tst_RuntimeHandlers)
#include "tst_runtimehandlers.moc"
