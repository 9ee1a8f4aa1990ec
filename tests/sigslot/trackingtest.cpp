#include <sigslot/signal.hpp>

#include <QtTest>

#include <memory>
#include <utility>

namespace counted {

/// A pointer type of its own, made trackable beside its type.
template <typename T>
struct Pointer {
    std::shared_ptr<T> kept;
};

template <typename T>
struct Weak {
    T *lock() const { return kept.lock().get(); }
    bool expired() const { return kept.expired(); }

    std::weak_ptr<T> kept;
};

template <typename T>
Weak<T> to_weak(const Pointer<T> &pointer)
{
    return {pointer.kept};
}

} // namespace counted

namespace {

struct Receiver {
    void take(int value) { sum += value; }

    int sum = 0;
};

struct Base {
    virtual ~Base() = default;
    int sum = 0;
    void take(int value) { sum += value; }
};

struct Derived : Base { };

/// Lets its last owner go within its slot.
class Resetting {
public:
    Resetting(std::shared_ptr<Resetting> &owner, bool &died, bool &diedInCall)
        : m_owner(owner)
        , m_died(died)
        , m_diedInCall(diedInCall)
    { }
    ~Resetting() { m_died = true; }

    void take(int)
    {
        bool &died = m_died;
        bool &diedInCall = m_diedInCall;
        m_owner.reset();
        diedInCall = died;
    }

private:
    std::shared_ptr<Resetting> &m_owner;
    bool &m_died;
    bool &m_diedInCall;
};

} // namespace

class TrackingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slotIsDroppedAfterTheReceiverDied();
    void guardedFunctionIsNotCalledWithoutItsObject();
    void extendedSlotIsDroppedToo();
    void connectionKnowsThatTheReceiverDied();
    void signalDoesNotKeepTheReceiver();
    void receiverLivesDuringTheCall();
    void receiverThatDiesInAnEmissionIsNotCalled();
    void expiredReceiverIsNeverCalled();
    void derivedReceiverOfABaseFunction();
    void ownPointerTypeIsTracked();
    void ownPointerTypeIsFoundByDisconnect();
    void otherSlotsOutliveTheReceiver();
};

void TrackingTest::slotIsDroppedAfterTheReceiverDied()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_shared<Receiver>();
    signal.connect(&Receiver::take, receiver);
    signal.connect(&Receiver::take, std::weak_ptr<Receiver>(receiver));
    signal(1);
    QCOMPARE(receiver->sum, 2);
    receiver.reset();
    QCOMPARE(signal.slot_count(), std::size_t(2));
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::guardedFunctionIsNotCalledWithoutItsObject()
{
    sigslot::signal<int> signal;
    auto token = std::make_shared<int>(0);
    int calls = 0;
    signal.connect([&calls](int) { ++calls; }, token);
    signal(1);
    token.reset();
    signal(1);
    QCOMPARE(calls, 1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::extendedSlotIsDroppedToo()
{
    sigslot::signal<int> signal;
    auto token = std::make_shared<int>(0);
    int calls = 0;
    signal.connect_extended([&calls](sigslot::connection &, int) { ++calls; }, token);
    signal(1);
    token.reset();
    signal(1);
    QCOMPARE(calls, 1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::connectionKnowsThatTheReceiverDied()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_shared<Receiver>();
    sigslot::connection handle = signal.connect(&Receiver::take, receiver);
    QVERIFY(handle.connected());
    receiver.reset();
    QVERIFY(!handle.connected());
    signal(1);
    QVERIFY(!handle.valid());
    QVERIFY(!handle.disconnect());
}

void TrackingTest::signalDoesNotKeepTheReceiver()
{
    sigslot::signal<int> signal;
    const auto receiver = std::make_shared<Receiver>();
    signal.connect(&Receiver::take, receiver);
    signal(1);
    QCOMPARE(receiver.use_count(), 1L);
}

void TrackingTest::receiverLivesDuringTheCall()
{
    std::shared_ptr<Resetting> owner;
    bool died = false;
    bool diedInCall = true;
    owner = std::make_shared<Resetting>(owner, died, diedInCall);
    sigslot::signal<int> signal;
    signal.connect(&Resetting::take, owner);
    signal(4);
    QVERIFY(!diedInCall);
    QVERIFY(died);
    signal(4);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::receiverThatDiesInAnEmissionIsNotCalled()
{
    sigslot::signal<int> signal;
    auto token = std::make_shared<int>(0);
    int calls = 0;
    signal.connect([&token](int) { token.reset(); });
    signal.connect([&calls](int) { ++calls; }, token);
    signal(1);
    QCOMPARE(calls, 0);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void TrackingTest::expiredReceiverIsNeverCalled()
{
    sigslot::signal<int> signal;
    signal.connect(&Receiver::take, std::weak_ptr<Receiver>());
    signal.connect(&Receiver::take, std::shared_ptr<Receiver>());
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::derivedReceiverOfABaseFunction()
{
    sigslot::signal<int> signal;
    const auto receiver = std::make_shared<Derived>();
    signal.connect(&Base::take, receiver);
    signal.connect(&Derived::take, receiver);
    signal(2);
    QCOMPARE(receiver->sum, 4);
}

void TrackingTest::ownPointerTypeIsTracked()
{
    sigslot::signal<int> signal;
    counted::Pointer<Receiver> receiver{std::make_shared<Receiver>()};
    signal.connect(&Receiver::take, receiver);
    signal(2);
    QCOMPARE(receiver.kept->sum, 2);
    receiver.kept.reset();
    signal(2);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void TrackingTest::ownPointerTypeIsFoundByDisconnect()
{
    sigslot::signal<int> signal;
    const counted::Pointer<Receiver> receiver{std::make_shared<Receiver>()};
    const counted::Pointer<Receiver> other{std::make_shared<Receiver>()};
    signal.connect(&Receiver::take, receiver);
    QCOMPARE(signal.disconnect(other), std::size_t(0));
    QCOMPARE(signal.disconnect(&Receiver::take, receiver), std::size_t(1));
}

void TrackingTest::otherSlotsOutliveTheReceiver()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_shared<Receiver>();
    Receiver other;
    signal.connect(&Receiver::take, receiver);
    signal.connect(&Receiver::take, &other);
    receiver.reset();
    signal(1);
    signal(1);
    QCOMPARE(other.sum, 2);
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

QTEST_GUILESS_MAIN(TrackingTest)
#include "trackingtest.moc"
