#include <sigslot/signal.hpp>

#include <QtTest>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace {

constexpr int threadCount = 4;
constexpr int rounds = 500;

/// Runs the task with numbers from 0 on several threads, which begin together, and waits for them.
void runTogether(const std::function<void(int)> &task)
{
    std::promise<void> go;
    const std::shared_future<void> started = go.get_future().share();
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&task, started, i] {
            started.wait();
            task(i);
        });
    }
    go.set_value();
    for (std::thread &thread : threads)
        thread.join();
}

void runOnAnotherThread(const std::function<void()> &task)
{
    std::thread(task).join();
}

struct Watcher : sigslot::observer {
    ~Watcher() override { disconnect_all(); }
    void take(int) { }
};

} // namespace

class ThreadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slotsRunOnTheEmittingThread();
    void emissionsReachEverySlot();
    void slotsRunWithoutTheLock();
    void connectingWhileEmitting();
    void disconnectingByTheSignalWhileEmitting();
    void blockingWhileEmitting();
    void onlyOneThreadDisconnects();
    void handlesMayOutliveTheSignalOnAnotherThread();
    void trackedReceiverDyingOnAnotherThread();
    void trackedReceiverIsKeptDuringTheCall();
    void observersOnSeveralThreads();
    void changesDoNotDisturbARunningEmission();
};

void ThreadsTest::slotsRunOnTheEmittingThread()
{
    sigslot::signal<> signal;
    std::thread::id ranOn;
    signal.connect([&ranOn] { ranOn = std::this_thread::get_id(); });
    std::thread::id emittedOn;
    runOnAnotherThread([&] {
        emittedOn = std::this_thread::get_id();
        signal();
    });
    QVERIFY(ranOn == emittedOn);
    signal();
    QVERIFY(ranOn == std::this_thread::get_id());
}

void ThreadsTest::emissionsReachEverySlot()
{
    sigslot::signal<int> signal;
    std::atomic<int> sum{0};
    for (int i = 0; i < 3; ++i)
        signal.connect([&sum](int value) { sum += value; });
    runTogether([&signal](int) {
        for (int i = 0; i < rounds; ++i)
            signal(1);
    });
    QCOMPARE(sum.load(), 3 * threadCount * rounds);
}

void ThreadsTest::slotsRunWithoutTheLock()
{
    sigslot::signal<bool> signal;
    int added = 0;
    std::size_t seenCount = 0;
    signal.connect([&](bool outer) {
        if (!outer)
            return;
        runOnAnotherThread([&] {
            signal.connect([&added](bool) { ++added; });
            signal(false);
            seenCount = signal.slot_count();
        });
    });
    signal(true);
    QCOMPARE(added, 1);
    QCOMPARE(seenCount, std::size_t(2));
}

void ThreadsTest::connectingWhileEmitting()
{
    sigslot::signal<int> signal;
    std::atomic<int> lasting{0};
    std::atomic<int> passing{0};
    signal.connect([&lasting](int) { ++lasting; });
    runTogether([&](int number) {
        for (int i = 0; i < rounds; ++i) {
            if (number % 2 == 0) {
                signal(i);
            } else {
                const sigslot::scoped_connection handle = signal.connect([&passing](int) { ++passing; }, i % 3);
                QVERIFY(handle.connected());
            }
        }
    });
    QCOMPARE(lasting.load(), threadCount / 2 * rounds);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void ThreadsTest::disconnectingByTheSignalWhileEmitting()
{
    sigslot::signal<int> signal;
    std::atomic<std::size_t> removed{0};
    const auto slot = [held = std::make_shared<int>(1)](int value) { return *held + value; };
    runTogether([&](int number) {
        for (int i = 0; i < rounds; ++i) {
            signal.connect(slot, number);
            signal(i);
            removed += number % 2 == 0 ? signal.disconnect(number) : signal.disconnect(slot);
        }
    });
    removed += signal.disconnect(slot);
    QCOMPARE(removed.load(), std::size_t(threadCount) * rounds);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ThreadsTest::blockingWhileEmitting()
{
    sigslot::signal<int> signal;
    std::atomic<int> calls{0};
    sigslot::connection handle = signal.connect([&calls](int) { ++calls; });
    runTogether([&](int number) {
        for (int i = 0; i < rounds; ++i) {
            if (number == 0)
                handle.blocker();
            else if (number == 1)
                i % 2 == 0 ? signal.block() : signal.unblock();
            else
                signal(i);
        }
    });
    signal.unblock();
    QVERIFY(!handle.blocked());
    const int before = calls;
    QVERIFY(before <= (threadCount - 2) * rounds);
    signal(1);
    QCOMPARE(calls.load(), before + 1);
}

void ThreadsTest::onlyOneThreadDisconnects()
{
    sigslot::signal<> signal;
    std::vector<sigslot::connection> handles;
    std::vector<std::atomic<int>> arrived(rounds);
    std::atomic<int> disconnected{0};
    // Within an emission, which keeps the slots: all threads find something to disconnect.
    signal.connect([&] {
        runTogether([&](int) {
            for (std::size_t i = 0; i < handles.size(); ++i) {
                // All threads at the same handle at once, not one behind the other.
                for (++arrived[i]; arrived[i] < threadCount;)
                    std::this_thread::yield();
                disconnected += handles[i].disconnect() ? 1 : 0;
            }
        });
    });
    for (int i = 0; i < rounds; ++i)
        handles.push_back(signal.connect([] { QFAIL("a disconnected slot was called"); }));
    signal();
    QCOMPARE(disconnected.load(), rounds);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void ThreadsTest::handlesMayOutliveTheSignalOnAnotherThread()
{
    for (int round = 0; round < 50; ++round) {
        std::optional<sigslot::signal<int>> signal(std::in_place);
        std::vector<sigslot::connection> handles;
        for (int i = 0; i < 10; ++i)
            handles.push_back(signal->connect([](int) {}));
        runTogether([&](int number) {
            if (number == 0) {
                signal.reset();
                return;
            }
            for (sigslot::connection handle : handles) {
                handle.block();
                handle.disconnect();
            }
        });
        for (const sigslot::connection &handle : handles)
            QVERIFY(!handle.connected());
    }
}

void ThreadsTest::trackedReceiverDyingOnAnotherThread()
{
    struct Receiver {
        void take(int value) { sum += value; }
        std::atomic<int> sum{0};
    };
    sigslot::signal<int> signal;
    runTogether([&signal](int number) {
        for (int i = 0; i < rounds; ++i) {
            if (number % 2 == 0) {
                signal(i);
            } else {
                const auto receiver = std::make_shared<Receiver>();
                signal.connect(&Receiver::take, receiver);
            }
        }
    });
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ThreadsTest::trackedReceiverIsKeptDuringTheCall()
{
    auto receiver = std::make_shared<int>(1);
    const std::weak_ptr<int> weak = receiver;
    sigslot::signal<> signal;
    bool aliveInCall = false;
    signal.connect(
        [&] {
            runOnAnotherThread([&receiver] { receiver.reset(); });
            aliveInCall = !weak.expired();
        },
        receiver);
    signal();
    QVERIFY(aliveInCall);
    QVERIFY(weak.expired());
}

void ThreadsTest::observersOnSeveralThreads()
{
    sigslot::signal<int> signal;
    Watcher shared;
    runTogether([&](int) {
        for (int i = 0; i < rounds; ++i) {
            Watcher own;
            signal.connect(&Watcher::take, &own);
            signal.connect(&Watcher::take, &shared);
        }
    });
    QCOMPARE(signal.slot_count(), std::size_t(threadCount) * rounds);
    QCOMPARE(signal.disconnect(&shared), std::size_t(threadCount) * rounds);
}

void ThreadsTest::changesDoNotDisturbARunningEmission()
{
    sigslot::signal<> signal;
    int calls = 0;
    signal.connect([&] {
        runOnAnotherThread([&signal] {
            signal.disconnect_all();
            signal.connect([] {});
        });
    });
    for (int i = 0; i < 10; ++i)
        signal.connect([&calls] { ++calls; });
    signal();
    QCOMPARE(calls, 10);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

QTEST_GUILESS_MAIN(ThreadsTest)
#include "threadstest.moc"
