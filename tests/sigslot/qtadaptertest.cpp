#include <sigslot/adapter/qt.hpp>
#include <sigslot/signal.hpp>

#include <QObject>
#include <QSharedPointer>
#include <QtTest>

#include <memory>

namespace host {

class Receiver : public QObject {
    Q_OBJECT

public:
    void take(int value) { sum += value; }
    void look(int value) const { looks += value; }
    void takeExtended(sigslot::connection &self, int value)
    {
        sum += value;
        self.disconnect();
    }

    int sum = 0;
    mutable int looks = 0;
};

struct Plain {
    void take(int value) { sum += value; }

    int sum = 0;
};

} // namespace host

using host::Plain;
using host::Receiver;

class QtAdapterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void memberFunctionIsCalled();
    void slotIsDroppedAfterTheReceiverDied();
    void connectionKnowsThatTheReceiverDied();
    void functionWithAQObjectIsCalled();
    void qtSlotOfABaseClassIsCalled();
    void extendedSlotIsTracked();
    void receiverThatDiesInAnEmissionIsNotCalled();
    void receiverMayDieInItsOwnSlot();
    void connectionsAreFoundByReceiver();
    void receiverMayBeAnObserver();
    void receiverDiesWithItsParent();
    void sharedAndWeakPointersAreTracked();
    void sharedReceiverLivesDuringTheCall();
    void otherPointersStayPlain();
};

void QtAdapterTest::memberFunctionIsCalled()
{
    sigslot::signal<int> signal;
    Receiver receiver;
    const Receiver *readOnly = &receiver;
    signal.connect(&Receiver::take, &receiver);
    signal.connect(&Receiver::take, &receiver, 3);
    signal.connect(&Receiver::look, readOnly);
    signal(2);
    QCOMPARE(receiver.sum, 4);
    QCOMPARE(receiver.looks, 2);
}

void QtAdapterTest::slotIsDroppedAfterTheReceiverDied()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_unique<Receiver>();
    signal.connect(&Receiver::take, receiver.get());
    signal(1);
    QCOMPARE(receiver->sum, 1);
    receiver.reset();
    QCOMPARE(signal.slot_count(), std::size_t(1));
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::connectionKnowsThatTheReceiverDied()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_unique<Receiver>();
    const sigslot::connection handle = signal.connect(&Receiver::take, receiver.get());
    QVERIFY(handle.connected());
    receiver.reset();
    QVERIFY(!handle.connected());
}

void QtAdapterTest::functionWithAQObjectIsCalled()
{
    sigslot::signal<int> signal;
    auto context = std::make_unique<QObject>();
    int calls = 0;
    signal.connect([&calls](int) { ++calls; }, context.get());
    signal(1);
    context.reset();
    signal(1);
    QCOMPARE(calls, 1);
}

void QtAdapterTest::qtSlotOfABaseClassIsCalled()
{
    sigslot::signal<const QString &> signal;
    Receiver receiver;
    signal.connect(&QObject::setObjectName, &receiver);
    signal(QStringLiteral("named"));
    QCOMPARE(receiver.objectName(), QStringLiteral("named"));
}

void QtAdapterTest::extendedSlotIsTracked()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_unique<Receiver>();
    auto other = std::make_unique<Receiver>();
    signal.connect_extended(&Receiver::takeExtended, receiver.get());
    signal.connect_extended(&Receiver::takeExtended, other.get());
    other.reset();
    signal(1);
    signal(1);
    QCOMPARE(receiver->sum, 1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::receiverThatDiesInAnEmissionIsNotCalled()
{
    sigslot::signal<int> signal;
    auto receiver = std::make_unique<Receiver>();
    int calls = 0;
    signal.connect([&receiver](int) { receiver.reset(); });
    signal.connect(&Receiver::take, receiver.get());
    signal.connect([&calls](int) { ++calls; });
    signal(1);
    QCOMPARE(calls, 1);
    QCOMPARE(signal.slot_count(), std::size_t(2));
}

void QtAdapterTest::receiverMayDieInItsOwnSlot()
{
    sigslot::signal<int> signal;
    auto *receiver = new Receiver;
    signal.connect([receiver](int) { delete receiver; }, receiver);
    signal(1);
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::connectionsAreFoundByReceiver()
{
    sigslot::signal<int> signal;
    Receiver receiver;
    Receiver other;
    signal.connect(&Receiver::take, &receiver);
    signal.connect([](int) {}, &receiver);
    signal.connect(&Receiver::take, &other);
    QCOMPARE(signal.disconnect(&Receiver::take, &receiver), std::size_t(1));
    QCOMPARE(signal.disconnect(&receiver), std::size_t(1));
    QCOMPARE(signal.slot_count(), std::size_t(1));
}

void QtAdapterTest::receiverMayBeAnObserver()
{
    class Both : public QObject, public sigslot::observer {
    public:
        ~Both() override { disconnect_all(); }
        void take(int value) { sum += value; }

        int sum = 0;
    };
    sigslot::signal<int> signal;
    {
        Both receiver;
        signal.connect(&Both::take, &receiver);
        signal(1);
        QCOMPARE(receiver.sum, 1);
    }
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::receiverDiesWithItsParent()
{
    sigslot::signal<int> signal;
    auto parent = std::make_unique<QObject>();
    auto *child = new Receiver;
    child->setParent(parent.get());
    signal.connect(&Receiver::take, child);
    parent.reset();
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::sharedAndWeakPointersAreTracked()
{
    sigslot::signal<int> signal;
    auto receiver = QSharedPointer<Plain>::create();
    signal.connect(&Plain::take, receiver);
    signal.connect(&Plain::take, receiver.toWeakRef());
    signal(1);
    QCOMPARE(receiver->sum, 2);
    QCOMPARE(signal.disconnect(receiver), std::size_t(2));
    signal.connect(&Plain::take, receiver);
    receiver.reset();
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void QtAdapterTest::sharedReceiverLivesDuringTheCall()
{
    sigslot::signal<int> signal;
    auto token = QSharedPointer<int>::create(1);
    const QWeakPointer<int> weak = token;
    bool aliveInCall = false;
    signal.connect(
        [&](int) {
            token.reset();
            aliveInCall = !weak.isNull();
        },
        token);
    signal(1);
    QVERIFY(aliveInCall);
    QVERIFY(weak.isNull());
}

void QtAdapterTest::otherPointersStayPlain()
{
    sigslot::signal<int> signal;
    Plain receiver;
    signal.connect(&Plain::take, &receiver);
    signal(2);
    QCOMPARE(receiver.sum, 2);
    QCOMPARE(signal.disconnect(&receiver), std::size_t(1));
}

QTEST_GUILESS_MAIN(QtAdapterTest)
#include "qtadaptertest.moc"
