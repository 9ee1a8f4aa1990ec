#include <sigslot/signal.hpp>

#include <QtTest>

#include <optional>
#include <vector>

namespace {

template <typename Base>
struct Watcher : Base {
    ~Watcher() override { this->disconnect_all(); }
    void take(int value) { sum += value; }
    void takeExtended(sigslot::connection &, int value) { sum += value; }
    void stop() { this->disconnect_all(); }

    int sum = 0;
};

using Observer = Watcher<sigslot::observer>;
using ObserverSt = Watcher<sigslot::observer_st>;

} // namespace

class ObserverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void connectionsEndWithTheObserver();
    void singleThreadedObserverEndsItsConnectionsToo();
    void extendedConnectionsEndToo();
    void disconnectAllMayBeCalledAtAnyTime();
    void observerOutlivesTheSignal();
    void observerMayDieInItsSlot();
    void observersAreIndependent();
    void handleMayDisconnectFirst();
    void manyShortLivedSignals();
};

void ObserverTest::connectionsEndWithTheObserver()
{
    sigslot::signal<int> first;
    sigslot::signal<int> second;
    {
        Observer observer;
        first.connect(&Observer::take, &observer);
        first.connect(&Observer::take, &observer, 2);
        second.connect(&Observer::take, &observer);
        first(1);
        second(1);
        QCOMPARE(observer.sum, 3);
    }
    QCOMPARE(first.slot_count(), std::size_t(0));
    QCOMPARE(second.slot_count(), std::size_t(0));
}

void ObserverTest::singleThreadedObserverEndsItsConnectionsToo()
{
    sigslot::signal_st<int> signal;
    {
        ObserverSt observer;
        signal.connect(&ObserverSt::take, &observer);
        signal(1);
        QCOMPARE(observer.sum, 1);
    }
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ObserverTest::extendedConnectionsEndToo()
{
    sigslot::signal<int> signal;
    {
        Observer observer;
        signal.connect_extended(&Observer::takeExtended, &observer);
        signal(1);
        QCOMPARE(observer.sum, 1);
    }
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ObserverTest::disconnectAllMayBeCalledAtAnyTime()
{
    sigslot::signal<int> signal;
    Observer observer;
    signal.connect(&Observer::take, &observer);
    observer.stop();
    observer.stop();
    QCOMPARE(signal.slot_count(), std::size_t(0));
    signal.connect(&Observer::take, &observer);
    signal(1);
    QCOMPARE(observer.sum, 1);
}

void ObserverTest::observerOutlivesTheSignal()
{
    Observer observer;
    {
        sigslot::signal<int> signal;
        signal.connect(&Observer::take, &observer);
        signal(1);
    }
    QCOMPARE(observer.sum, 1);
}

void ObserverTest::observerMayDieInItsSlot()
{
    sigslot::signal<int> signal;
    std::optional<Observer> observer(std::in_place);
    signal.connect([&observer](int) { observer.reset(); });
    signal.connect(&Observer::take, &*observer);
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void ObserverTest::observersAreIndependent()
{
    sigslot::signal<int> signal;
    Observer kept;
    signal.connect(&Observer::take, &kept);
    {
        Observer gone;
        signal.connect(&Observer::take, &gone);
    }
    signal(1);
    QCOMPARE(kept.sum, 1);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void ObserverTest::handleMayDisconnectFirst()
{
    sigslot::signal<int> signal;
    Observer observer;
    sigslot::connection handle = signal.connect(&Observer::take, &observer);
    QVERIFY(handle.disconnect());
    QCOMPARE(signal.disconnect(&observer), std::size_t(0));
    signal(1);
    QCOMPARE(observer.sum, 0);
}

void ObserverTest::manyShortLivedSignals()
{
    sigslot::signal<int> lasting;
    {
        Observer observer;
        lasting.connect(&Observer::take, &observer);
        for (int i = 0; i < 1000; ++i) {
            sigslot::signal<int> passing;
            passing.connect(&Observer::take, &observer);
            passing(1);
        }
        lasting(1);
        QCOMPARE(observer.sum, 1001);
    }
    QCOMPARE(lasting.slot_count(), std::size_t(0));
}

QTEST_GUILESS_MAIN(ObserverTest)
#include "observertest.moc"
