#include <sigslot/signal.hpp>

#include <QVector>
#include <QtTest>

#include <string>

class ChainTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void chainedSignalIsEmitted();
    void argumentsAreConverted();
    void referenceReachesTheChainedSlots();
    void chainHasAPlaceAmongTheSlots();
    void chainMayHaveAGroup();
    void differentLocksMayBeChained();
    void blockedChainedSignalCallsNothing();
    void chainCanBeDisconnected();
    void chainOfThree();
};

void ChainTest::chainedSignalIsEmitted()
{
    sigslot::signal<int> first;
    sigslot::signal<int> second;
    int seen = 0;
    second.connect([&seen](int value) { seen = value; });
    const sigslot::connection chain = sigslot::connect(first, second);
    QVERIFY(chain.connected());
    first(4);
    QCOMPARE(seen, 4);
}

void ChainTest::argumentsAreConverted()
{
    sigslot::signal<const char *> first;
    sigslot::signal<const std::string &> second;
    std::string seen;
    second.connect([&seen](const std::string &text) { seen = text; });
    sigslot::connect(first, second);
    first("text");
    QCOMPARE(seen, std::string("text"));
}

void ChainTest::referenceReachesTheChainedSlots()
{
    sigslot::signal<int &> first;
    sigslot::signal<int &> second;
    second.connect([](int &value) { ++value; });
    sigslot::connect(first, second);
    int value = 1;
    first(value);
    QCOMPARE(value, 2);
}

void ChainTest::chainHasAPlaceAmongTheSlots()
{
    sigslot::signal<> first;
    sigslot::signal<> second;
    QVector<int> calls;
    first.connect([&calls] { calls << 1; });
    sigslot::connect(first, second);
    first.connect([&calls] { calls << 3; });
    second.connect([&calls] { calls << 2; });
    first();
    QCOMPARE(calls, (QVector<int>{1, 2, 3}));
}

void ChainTest::chainMayHaveAGroup()
{
    sigslot::signal<> first;
    sigslot::signal<> second;
    QVector<int> calls;
    sigslot::connect(first, second, 1);
    first.connect([&calls] { calls << 1; });
    second.connect([&calls] { calls << 2; });
    first();
    QCOMPARE(calls, (QVector<int>{1, 2}));
    QCOMPARE(first.disconnect(1), std::size_t(1));
}

void ChainTest::differentLocksMayBeChained()
{
    sigslot::signal<int> first;
    sigslot::signal_st<int> second;
    int seen = 0;
    second.connect([&seen](int value) { seen = value; });
    sigslot::connect(first, second);
    first(4);
    QCOMPARE(seen, 4);
}

void ChainTest::blockedChainedSignalCallsNothing()
{
    sigslot::signal<> first;
    sigslot::signal<> second;
    int calls = 0;
    second.connect([&calls] { ++calls; });
    sigslot::connect(first, second);
    second.block();
    first();
    QCOMPARE(calls, 0);
    second.unblock();
    first();
    QCOMPARE(calls, 1);
}

void ChainTest::chainCanBeDisconnected()
{
    sigslot::signal<> first;
    sigslot::signal<> second;
    int calls = 0;
    second.connect([&calls] { ++calls; });
    sigslot::connection chain = sigslot::connect(first, second);
    QVERIFY(chain.disconnect());
    first();
    QCOMPARE(calls, 0);
    QCOMPARE(first.slot_count(), std::size_t(0));
    QCOMPARE(second.slot_count(), std::size_t(1));
}

void ChainTest::chainOfThree()
{
    sigslot::signal<int> first;
    sigslot::signal<int> second;
    sigslot::signal<int> third;
    int seen = 0;
    sigslot::connect(first, second);
    sigslot::connect(second, third);
    third.connect([&seen](int value) { seen += value; });
    first(4);
    second(1);
    QCOMPARE(seen, 5);
}

QTEST_GUILESS_MAIN(ChainTest)
#include "chaintest.moc"
