#include <sigslot/signal.hpp>

#include <QVector>
#include <QtTest>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class OwnHeaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void orderIsKeptAfterDisconnect_data();
    void orderIsKeptAfterDisconnect();
    void orderIsKeptAfterDisconnectInAnEmission();
    void newSlotRunsLastAfterDisconnect();
    void orderOfOtherGroupsIsKept();
    void chainEndsWithTheChainedSignal();
    void chainFollowsMovedSignals();
    void slotMayUseTheSignalWhileItIsDestroyed_data();
    void slotMayUseTheSignalWhileItIsDestroyed();
};

void OwnHeaderTest::orderIsKeptAfterDisconnect_data()
{
    QTest::addColumn<QVector<int>>("gone");
    QTest::addColumn<QVector<int>>("left");
    QTest::newRow("first") << QVector<int>{0} << QVector<int>{1, 2, 3, 4};
    QTest::newRow("second") << QVector<int>{1} << QVector<int>{0, 2, 3, 4};
    QTest::newRow("last") << QVector<int>{4} << QVector<int>{0, 1, 2, 3};
    QTest::newRow("two") << QVector<int>{3, 0} << QVector<int>{1, 2, 4};
    QTest::newRow("all but one") << QVector<int>{0, 1, 3, 4} << QVector<int>{2};
}

void OwnHeaderTest::orderIsKeptAfterDisconnect()
{
    QFETCH(QVector<int>, gone);
    QFETCH(QVector<int>, left);
    sigslot::signal<> signal;
    QVector<int> calls;
    std::vector<sigslot::connection> handles;
    for (int id = 0; id < 5; ++id)
        handles.push_back(signal.connect([&calls, id] { calls << id; }));
    for (const int id : gone)
        QVERIFY(handles.at(static_cast<std::size_t>(id)).disconnect());
    signal();
    QCOMPARE(calls, left);
}

void OwnHeaderTest::orderIsKeptAfterDisconnectInAnEmission()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    signal.connect_extended([&calls](sigslot::connection &self) {
        calls << 0;
        self.disconnect();
    });
    for (int id = 1; id < 4; ++id)
        signal.connect([&calls, id] { calls << id; });
    signal();
    signal();
    QCOMPARE(calls, (QVector<int>{0, 1, 2, 3, 1, 2, 3}));
}

void OwnHeaderTest::newSlotRunsLastAfterDisconnect()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    signal.connect([&calls] { calls << 0; });
    sigslot::connection middle = signal.connect([&calls] { calls << 1; });
    signal.connect([&calls] { calls << 2; });
    middle.disconnect();
    signal.connect([&calls] { calls << 3; });
    signal();
    QCOMPARE(calls, (QVector<int>{0, 2, 3}));
}

void OwnHeaderTest::orderOfOtherGroupsIsKept()
{
    sigslot::signal<> signal;
    QVector<int> calls;
    for (const int id : {10, 0, 11, 1, 20, 12, 2, 21})
        signal.connect([&calls, id] { calls << id; }, id / 10);
    sigslot::connection gone = signal.connect([&calls] { calls << 13; }, 1);
    signal.connect([&calls] { calls << 14; }, 1);
    gone.disconnect();
    QCOMPARE(signal.disconnect(0), std::size_t(3));
    signal();
    QCOMPARE(calls, (QVector<int>{10, 11, 12, 14, 20, 21}));
}

void OwnHeaderTest::chainEndsWithTheChainedSignal()
{
    sigslot::signal<> first;
    std::optional<sigslot::signal<>> second(std::in_place);
    const sigslot::connection chain = sigslot::connect(first, *second);
    second.reset();
    QVERIFY(!chain.connected());
    first();
    QCOMPARE(first.slot_count(), std::size_t(0));
}

void OwnHeaderTest::chainFollowsMovedSignals()
{
    sigslot::signal<> first;
    sigslot::signal<> second;
    int calls = 0;
    second.connect([&calls] { ++calls; });
    sigslot::connect(first, second);
    sigslot::signal<> movedSecond(std::move(second));
    sigslot::signal<> movedFirst(std::move(first));
    movedFirst();
    QCOMPARE(calls, 1);
}

void OwnHeaderTest::slotMayUseTheSignalWhileItIsDestroyed_data()
{
    QTest::addColumn<bool>("all");
    QTest::newRow("disconnect_all") << true;
    QTest::newRow("disconnect") << false;
}

void OwnHeaderTest::slotMayUseTheSignalWhileItIsDestroyed()
{
    QFETCH(bool, all);
    sigslot::signal<> signal;
    std::size_t countAtEnd = 99;
    auto atEnd = [&](int *value) {
        countAtEnd = signal.slot_count();
        delete value;
    };
    signal.connect([held = std::shared_ptr<int>(new int(0), atEnd)] { ++*held; });
    signal();
    if (all)
        signal.disconnect_all();
    else
        QCOMPARE(signal.disconnect(0), std::size_t(1));
    QCOMPARE(countAtEnd, std::size_t(0));
}

QTEST_GUILESS_MAIN(OwnHeaderTest)
#include "ownheadertest.moc"
