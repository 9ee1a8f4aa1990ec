#include <sigslot/signal.hpp>

#include <QtTest>

#include <functional>
#include <memory>

namespace {

int functionCalls = 0;

void count(int)
{
    ++functionCalls;
}

void countTwice(int)
{
    functionCalls += 2;
}

void countExtended(sigslot::connection &, int)
{
    ++functionCalls;
}

struct Receiver {
    void take(int) { ++calls; }
    void takeTwice(int) { calls += 2; }
    virtual ~Receiver() = default;
    virtual void takeVirtual(int) { ++calls; }

    int calls = 0;
};

struct Functor {
    void operator()(int) const { ++functionCalls; }
};

} // namespace

class DisconnectTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { functionCalls = 0; }

    void byFunction();
    void byFunctionFindsTrackedAndExtendedSlots();
    void byFunctionObject();
    void byLambda();
    void byMemberFunction();
    void byVirtualMemberFunction();
    void byObject();
    void byNullObjectRemovesNothing();
    void byTrackedObject();
    void byMemberFunctionAndObject();
    void byFunctionAndTrackedObject();
    void byGroup();
    void all();
    void nothingFoundIsZero();
    void otherSlotsStay();
};

void DisconnectTest::byFunction()
{
    sigslot::signal<int> signal;
    signal.connect(count);
    signal.connect(countTwice);
    signal.connect(&count);
    QCOMPARE(signal.disconnect(count), std::size_t(2));
    QCOMPARE(signal.disconnect(&count), std::size_t(0));
    signal(1);
    QCOMPARE(functionCalls, 2);
    QCOMPARE(signal.disconnect(&countTwice), std::size_t(1));
}

void DisconnectTest::byFunctionFindsTrackedAndExtendedSlots()
{
    sigslot::signal<int> signal;
    const auto token = std::make_shared<int>(0);
    signal.connect(count, token);
    signal.connect(count, 4);
    signal.connect_extended(countExtended);
    QCOMPARE(signal.disconnect(count), std::size_t(2));
    QCOMPARE(signal.disconnect(countExtended), std::size_t(1));
}

void DisconnectTest::byFunctionObject()
{
    sigslot::signal<int> signal;
    signal.connect(Functor());
    signal.connect(std::function<void(int)>(count));
    QCOMPARE(signal.disconnect(Functor()), std::size_t(1));
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void DisconnectTest::byLambda()
{
    sigslot::signal<int> signal;
    int calls = 0;
    auto one = [&calls](int) { ++calls; };
    auto other = [&calls](int) { calls += 10; };
    auto generic = [&calls](auto) { calls += 100; };
    signal.connect(one);
    signal.connect(other);
    signal.connect(generic);
    QCOMPARE(signal.disconnect(one), std::size_t(1));
    QCOMPARE(signal.disconnect(generic), std::size_t(1));
    signal(1);
    QCOMPARE(calls, 10);
}

void DisconnectTest::byMemberFunction()
{
    sigslot::signal<int> signal;
    Receiver first;
    Receiver second;
    const auto tracked = std::make_shared<Receiver>();
    signal.connect(&Receiver::take, &first);
    signal.connect(&Receiver::takeTwice, &first);
    signal.connect(&Receiver::take, &second);
    signal.connect(&Receiver::take, tracked);
    QCOMPARE(signal.disconnect(&Receiver::take), std::size_t(3));
    signal(1);
    QCOMPARE(first.calls, 2);
    QCOMPARE(second.calls + tracked->calls, 0);
}

void DisconnectTest::byVirtualMemberFunction()
{
    sigslot::signal<int> signal;
    Receiver receiver;
    signal.connect(&Receiver::takeVirtual, &receiver);
    QCOMPARE(signal.disconnect(&Receiver::take), std::size_t(0));
    QCOMPARE(signal.disconnect(&Receiver::takeVirtual), std::size_t(1));
}

void DisconnectTest::byObject()
{
    sigslot::signal<int> signal;
    Receiver first;
    Receiver second;
    signal.connect(&Receiver::take, &first);
    signal.connect(&Receiver::takeTwice, &first);
    signal.connect(&Receiver::take, &second);
    signal.connect(count);
    QCOMPARE(signal.disconnect(&first), std::size_t(2));
    signal(1);
    QCOMPARE(first.calls, 0);
    QCOMPARE(second.calls, 1);
    QCOMPARE(functionCalls, 1);
}

void DisconnectTest::byNullObjectRemovesNothing()
{
    sigslot::signal<int> signal;
    signal.connect(count);
    QCOMPARE(signal.disconnect(static_cast<Receiver *>(nullptr)), std::size_t(0));
    QCOMPARE(signal.disconnect(std::shared_ptr<Receiver>()), std::size_t(0));
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void DisconnectTest::byTrackedObject()
{
    sigslot::signal<int> signal;
    const auto receiver = std::make_shared<Receiver>();
    const std::weak_ptr<Receiver> weak = receiver;
    signal.connect(&Receiver::take, receiver);
    signal.connect(count, receiver);
    QCOMPARE(signal.disconnect(receiver), std::size_t(2));
    signal.connect(&Receiver::take, weak);
    QCOMPARE(signal.disconnect(weak), std::size_t(1));
    signal.connect(&Receiver::take, receiver);
    QCOMPARE(signal.disconnect(receiver.get()), std::size_t(1));
}

void DisconnectTest::byMemberFunctionAndObject()
{
    sigslot::signal<int> signal;
    Receiver first;
    Receiver second;
    signal.connect(&Receiver::take, &first);
    signal.connect(&Receiver::takeTwice, &first);
    signal.connect(&Receiver::take, &second);
    QCOMPARE(signal.disconnect(&Receiver::take, &first), std::size_t(1));
    signal(1);
    QCOMPARE(first.calls, 2);
    QCOMPARE(second.calls, 1);
}

void DisconnectTest::byFunctionAndTrackedObject()
{
    sigslot::signal<int> signal;
    const auto one = std::make_shared<int>(0);
    const auto other = std::make_shared<int>(0);
    auto lambda = [](int) { functionCalls += 100; };
    signal.connect(count, one);
    signal.connect(count, other);
    signal.connect(count);
    signal.connect(lambda, one);
    QCOMPARE(signal.disconnect(count, one), std::size_t(1));
    QCOMPARE(signal.disconnect(lambda, one), std::size_t(1));
    signal(1);
    QCOMPARE(functionCalls, 2);
}

void DisconnectTest::byGroup()
{
    sigslot::signal<int> signal;
    signal.connect(count, 1);
    signal.connect(count, 2);
    signal.connect(countTwice, 2);
    QCOMPARE(signal.disconnect(2), std::size_t(2));
    QCOMPARE(signal.disconnect(sigslot::group_id(5)), std::size_t(0));
    signal(1);
    QCOMPARE(functionCalls, 1);
}

void DisconnectTest::all()
{
    sigslot::signal<int> signal;
    const sigslot::connection handle = signal.connect(count, 1);
    signal.connect(countTwice);
    signal.disconnect_all();
    signal(1);
    QCOMPARE(functionCalls, 0);
    QCOMPARE(signal.slot_count(), std::size_t(0));
    QVERIFY(!handle.valid());
    QVERIFY(!handle.connected());
}

void DisconnectTest::nothingFoundIsZero()
{
    sigslot::signal<int> signal;
    Receiver receiver;
    QCOMPARE(signal.disconnect(count), std::size_t(0));
    QCOMPARE(signal.disconnect(&Receiver::take), std::size_t(0));
    QCOMPARE(signal.disconnect(&receiver), std::size_t(0));
    QCOMPARE(signal.disconnect(&Receiver::take, &receiver), std::size_t(0));
    QCOMPARE(signal.disconnect(0), std::size_t(0));
}

void DisconnectTest::otherSlotsStay()
{
    sigslot::signal<int> signal;
    signal.connect(count);
    const sigslot::connection kept = signal.connect(countTwice);
    signal.disconnect(count);
    QVERIFY(kept.connected());
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

QTEST_GUILESS_MAIN(DisconnectTest)
#include "disconnecttest.moc"
