#include <sigslot/adapter/boost.hpp>
#include <sigslot/signal.hpp>

#include <QtTest>

#include <boost/make_shared.hpp>

namespace {

struct Receiver {
    void take(int value) { sum += value; }

    int sum = 0;
};

} // namespace

class BoostAdapterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sharedAndWeakPointersAreTracked();
    void connectionsAreFoundByReceiver();
};

void BoostAdapterTest::sharedAndWeakPointersAreTracked()
{
    sigslot::signal<int> signal;
    auto receiver = boost::make_shared<Receiver>();
    signal.connect(&Receiver::take, receiver);
    signal.connect(&Receiver::take, boost::weak_ptr<Receiver>(receiver), 1);
    signal.connect([](int) {}, receiver);
    signal(1);
    QCOMPARE(receiver->sum, 2);
    receiver.reset();
    signal(1);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void BoostAdapterTest::connectionsAreFoundByReceiver()
{
    sigslot::signal<int> signal;
    const auto receiver = boost::make_shared<Receiver>();
    signal.connect(&Receiver::take, receiver);
    QCOMPARE(signal.disconnect(receiver), std::size_t(1));
}

QTEST_GUILESS_MAIN(BoostAdapterTest)
#include "boostadaptertest.moc"
