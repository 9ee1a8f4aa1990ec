#include <sigslot/signal.hpp>

#include <QVector>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <memory>

class OrderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slotsRunInConnectionOrder();
    void groupsRunInAscendingOrder();
    void connectionOrderHoldsWithinAGroup();
    void groupZeroIsTheDefault();
    void everyKindOfSlotKeepsItsPlace();
    void sameSlotConnectedTwiceRunsTwice();
};

namespace {

struct Entry {
    void take() { calls->append(id); }

    QVector<int> *calls;
    int id;
};

} // namespace

void OrderTest::slotsRunInConnectionOrder()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    QVector<int> expected;
    for (int id = 0; id < 100; ++id) {
        signal.connect([&calls, id] { calls << id; });
        expected << id;
    }
    signal();
    QCOMPARE(calls, expected);
}

void OrderTest::groupsRunInAscendingOrder()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    const QVector<sigslot::group_id> groups{5, std::numeric_limits<sigslot::group_id>::max(), -3,
                                            0, std::numeric_limits<sigslot::group_id>::min(), 1};
    for (const sigslot::group_id group : groups)
        signal.connect([&calls, group] { calls << group; }, group);
    signal();
    QVector<int> sorted = groups;
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(calls, sorted);
}

void OrderTest::connectionOrderHoldsWithinAGroup()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    for (const int id : {20, 10, 0, 1, 11, 21, 12, 2, 22})
        signal.connect([&calls, id] { calls << id; }, id / 10);
    signal();
    QCOMPARE(calls, (QVector<int>{0, 1, 2, 10, 11, 12, 20, 21, 22}));
}

void OrderTest::groupZeroIsTheDefault()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    signal.connect([&calls] { calls << 1; }, 1);
    signal.connect([&calls] { calls << 0; });
    signal.connect([&calls] { calls << -1; }, -1);
    signal();
    QCOMPARE(calls, (QVector<int>{-1, 0, 1}));
}

void OrderTest::everyKindOfSlotKeepsItsPlace()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    Entry bound{&calls, 1};
    const auto tracked = std::make_shared<Entry>(Entry{&calls, 2});
    signal.connect([&calls] { calls << 0; });
    signal.connect(&Entry::take, &bound);
    signal.connect(&Entry::take, tracked);
    signal.connect_extended([&calls](sigslot::connection &) { calls << 3; });
    signal.connect([&calls] { calls << 4; }, tracked);
    signal();
    QCOMPARE(calls, (QVector<int>{0, 1, 2, 3, 4}));
}

void OrderTest::sameSlotConnectedTwiceRunsTwice()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    Entry bound{&calls, 1};
    signal.connect(&Entry::take, &bound);
    signal.connect(&Entry::take, &bound);
    signal();
    QCOMPARE(calls, (QVector<int>{1, 1}));
}

QTEST_GUILESS_MAIN(OrderTest)
#include "ordertest.moc"
