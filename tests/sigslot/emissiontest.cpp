#include <sigslot/signal.hpp>

#include <QVector>
#include <QtTest>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

class EmissionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_calls.clear(); }

    void slotConnectedInAnEmissionRunsFromTheNext();
    void handleDisconnectsALaterSlotAtOnce();
    void handleBlocksALaterSlotAtOnce();
    void signalDisconnectsFromTheNextEmission_data();
    void signalDisconnectsFromTheNextEmission();
    void slotMayDisconnectItself();
    void signalBlocksFromTheNextEmission();
    void nestedEmissionSeesTheNewSlots();
    void recursiveEmissionEnds();
    void signalsMayEmitEachOther();
    void exceptionReachesTheEmitterAndSkipsTheRest();
    void signalWorksAfterAnException();
    void signalMayBeDestroyedInASlot();
    void signalMayBeMovedFromInASlot();

private:
    auto note(int id)
    {
        return [this, id] { m_calls << id; };
    }

    QVector<int> m_calls;
};

void EmissionTest::slotConnectedInAnEmissionRunsFromTheNext()
{
    sigslot::signal<> signal;
    signal.connect_extended([&](sigslot::connection &self) {
        self.disconnect();
        signal.connect(note(2));
    });
    signal.connect(note(1));
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
    signal();
    QCOMPARE(m_calls.mid(1), (QVector<int>{1, 2}));
}

void EmissionTest::handleDisconnectsALaterSlotAtOnce()
{
    sigslot::signal<> signal;
    sigslot::connection later;
    signal.connect([&later] { later.disconnect(); });
    later = signal.connect(note(1));
    signal.connect(note(2));
    signal();
    QCOMPARE(m_calls, (QVector<int>{2}));
}

void EmissionTest::handleBlocksALaterSlotAtOnce()
{
    sigslot::signal<> signal;
    sigslot::connection later;
    signal.connect([&later] { later.block(); });
    later = signal.connect(note(1));
    signal();
    QCOMPARE(m_calls, QVector<int>());
    QVERIFY(later.connected());
}

void EmissionTest::signalDisconnectsFromTheNextEmission_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("all") << 0;
    QTest::newRow("by group") << 1;
    QTest::newRow("by object") << 2;
    QTest::newRow("by function") << 3;
}

void EmissionTest::signalDisconnectsFromTheNextEmission()
{
    QFETCH(int, way);
    struct Receiver {
        void take() { calls->append(1); }
        QVector<int> *calls;
    } receiver{&m_calls};
    sigslot::signal<> signal;
    signal.connect([&] {
        if (way == 0)
            signal.disconnect_all();
        else if (way == 1)
            signal.disconnect(4);
        else if (way == 2)
            signal.disconnect(&receiver);
        else
            signal.disconnect(&Receiver::take);
    });
    signal.connect(&Receiver::take, &receiver, 4);
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
}

void EmissionTest::slotMayDisconnectItself()
{
    sigslot::signal<> signal;
    sigslot::connection self;
    self = signal.connect([&] {
        m_calls << 1;
        QVERIFY(self.disconnect());
        QVERIFY(!self.disconnect());
        m_calls << 2;
    });
    signal.connect(note(3));
    signal();
    signal();
    QCOMPARE(m_calls, (QVector<int>{1, 2, 3, 3}));
}

void EmissionTest::signalBlocksFromTheNextEmission()
{
    sigslot::signal<> signal;
    QVERIFY(!signal.blocked());
    signal.connect([&signal] { signal.block(); });
    signal.connect(note(1));
    signal();
    QVERIFY(signal.blocked());
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
    signal.unblock();
    signal();
    QCOMPARE(m_calls, (QVector<int>{1, 1}));
}

void EmissionTest::nestedEmissionSeesTheNewSlots()
{
    sigslot::signal<> signal;
    bool outer = true;
    signal.connect([&] {
        if (!std::exchange(outer, false))
            return;
        signal.connect(note(2));
        signal();
        m_calls << 0;
    });
    signal.connect(note(1));
    signal();
    QCOMPARE(m_calls, (QVector<int>{1, 2, 0, 1}));
}

void EmissionTest::recursiveEmissionEnds()
{
    sigslot::signal<int> signal;
    signal.connect([&](int depth) {
        m_calls << depth;
        if (depth > 0)
            signal(depth - 1);
    });
    signal(3);
    QCOMPARE(m_calls, (QVector<int>{3, 2, 1, 0}));
}

void EmissionTest::signalsMayEmitEachOther()
{
    sigslot::signal<int> ping;
    sigslot::signal<int> pong;
    ping.connect([&](int left) {
        m_calls << left;
        pong(left - 1);
    });
    pong.connect([&](int left) {
        if (left > 0)
            ping(left - 1);
    });
    ping(4);
    QCOMPARE(m_calls, (QVector<int>{4, 2, 0}));
}

void EmissionTest::exceptionReachesTheEmitterAndSkipsTheRest()
{
    sigslot::signal<> signal;
    signal.connect(note(1));
    signal.connect([] { throw std::runtime_error("slot failed"); });
    signal.connect(note(2));
    QVERIFY_EXCEPTION_THROWN(signal(), std::runtime_error);
    QCOMPARE(m_calls, (QVector<int>{1}));
}

void EmissionTest::signalWorksAfterAnException()
{
    sigslot::signal<> signal;
    sigslot::connection bad = signal.connect([] { throw std::runtime_error("slot failed"); });
    signal.connect(note(1));
    QVERIFY_EXCEPTION_THROWN(signal(), std::runtime_error);
    QCOMPARE(signal.slot_count(), std::size_t(2));
    QVERIFY(bad.disconnect());
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
}

void EmissionTest::signalMayBeDestroyedInASlot()
{
    auto signal = std::make_unique<sigslot::signal<std::string>>();
    std::string seen;
    sigslot::connection later;
    signal->connect([&](const std::string &) { signal.reset(); });
    later = signal->connect([&seen](const std::string &text) { seen = text; });
    (*signal)("a text that is too long to be kept inside of the string object");
    QVERIFY(!signal);
    QVERIFY(seen.size() > 32);
    QVERIFY(!later.valid());
    QVERIFY(!later.disconnect());
}

void EmissionTest::signalMayBeMovedFromInASlot()
{
    std::optional<sigslot::signal<>> target;
    sigslot::signal<> signal;
    signal.connect([&] {
        if (!target)
            target.emplace(std::move(signal));
    });
    signal.connect(note(1));
    signal();
    QCOMPARE(m_calls, (QVector<int>{1}));
    (*target)();
    QCOMPARE(m_calls, (QVector<int>{1, 1}));
}

QTEST_GUILESS_MAIN(EmissionTest)
#include "emissiontest.moc"
