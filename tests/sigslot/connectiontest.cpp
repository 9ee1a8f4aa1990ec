#include <sigslot/signal.hpp>

#include <QtTest>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

static_assert(!std::is_copy_constructible_v<sigslot::signal<int>> && !std::is_copy_assignable_v<sigslot::signal<int>>);
static_assert(std::is_move_constructible_v<sigslot::signal<int>> && std::is_move_assignable_v<sigslot::signal<int>>);
static_assert(std::is_final_v<sigslot::signal<int>> && std::has_virtual_destructor_v<sigslot::signal<int>>);
static_assert(std::is_same_v<sigslot::signal<int, bool>, sigslot::signal_base<std::mutex, int, bool>>);
static_assert(std::is_same_v<sigslot::group_id, std::int32_t>);
static_assert(std::is_copy_constructible_v<sigslot::connection> && std::is_copy_assignable_v<sigslot::connection>);
static_assert(!std::is_copy_constructible_v<sigslot::scoped_connection>);
static_assert(!std::is_copy_assignable_v<sigslot::scoped_connection>);
static_assert(std::is_convertible_v<sigslot::connection, sigslot::scoped_connection>);
static_assert(!std::is_copy_constructible_v<sigslot::connection_blocker>);

class ConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_calls = 0; }

    void emptyHandleDoesNothing();
    void handleDoesNotKeepTheConnection();
    void copiesAreTheSameConnection();
    void disconnectIsTrueOnlyOnce();
    void handleOutlivesItsSignal();
    void blockedSlotIsLeftOut();
    void blockerUnblocksAtItsEnd();
    void movedBlockerStillBlocks();
    void assignedBlockerUnblocksItsFirst();
    void scopedConnectionDisconnects();
    void movedScopedConnectionKeepsTheSlot();
    void assignedScopedConnectionDropsItsFirst();
    void scopedConnectionOutlivesItsSignal();
    void slotObjectGoesWithTheConnection();
    void slotCountCountsBlockedSlots();
    void movedSignalKeepsItsSlots();
    void assignedSignalDropsItsOwnSlots();
    void movedFromSignalIsUsable();
    void blockedSignalMovesBlocked();

private:
    auto counting()
    {
        return [this] { ++m_calls; };
    }

    int m_calls = 0;
};

void ConnectionTest::emptyHandleDoesNothing()
{
    sigslot::connection handle;
    QVERIFY(!handle.valid());
    QVERIFY(!handle.connected());
    QVERIFY(!handle.blocked());
    QVERIFY(!handle.disconnect());
    handle.block();
    handle.unblock();
    const sigslot::connection_blocker blocker = handle.blocker();
    const sigslot::scoped_connection scoped;
    QVERIFY(!scoped.valid());
}

void ConnectionTest::handleDoesNotKeepTheConnection()
{
    sigslot::signal<> signal;
    {
        const sigslot::connection handle = signal.connect(counting());
        QVERIFY(handle.valid());
    }
    signal();
    QCOMPARE(m_calls, 1);
}

void ConnectionTest::copiesAreTheSameConnection()
{
    sigslot::signal<> signal;
    sigslot::connection first = signal.connect(counting());
    sigslot::connection second = first;
    second.block();
    QVERIFY(first.blocked());
    QVERIFY(first.disconnect());
    QVERIFY(!second.connected());
    QVERIFY(!second.disconnect());
}

void ConnectionTest::disconnectIsTrueOnlyOnce()
{
    sigslot::signal<> signal;
    sigslot::connection handle = signal.connect(counting());
    QVERIFY(handle.connected());
    QVERIFY(handle.disconnect());
    QVERIFY(!handle.disconnect());
    QVERIFY(!handle.connected());
    signal();
    QCOMPARE(m_calls, 0);
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ConnectionTest::handleOutlivesItsSignal()
{
    std::optional<sigslot::signal<>> signal(std::in_place);
    sigslot::connection handle = signal->connect(counting());
    signal.reset();
    QVERIFY(!handle.valid());
    QVERIFY(!handle.connected());
    QVERIFY(!handle.disconnect());
    handle.block();
    QVERIFY(!handle.blocked());
}

void ConnectionTest::blockedSlotIsLeftOut()
{
    sigslot::signal<> signal;
    sigslot::connection handle = signal.connect(counting());
    signal.connect(counting());
    handle.block();
    handle.block();
    signal();
    QCOMPARE(m_calls, 1);
    QVERIFY(handle.connected());
    handle.unblock();
    signal();
    QCOMPARE(m_calls, 3);
}

void ConnectionTest::blockerUnblocksAtItsEnd()
{
    sigslot::signal<> signal;
    const sigslot::connection handle = signal.connect(counting());
    {
        const sigslot::connection_blocker blocker = handle.blocker();
        QVERIFY(handle.blocked());
        signal();
        QCOMPARE(m_calls, 0);
    }
    QVERIFY(!handle.blocked());
    signal();
    QCOMPARE(m_calls, 1);
}

void ConnectionTest::movedBlockerStillBlocks()
{
    sigslot::signal<> signal;
    const sigslot::connection handle = signal.connect(counting());
    auto first = std::make_unique<sigslot::connection_blocker>(handle.blocker());
    {
        const sigslot::connection_blocker second = std::move(*first);
        first.reset();
        QVERIFY(handle.blocked());
    }
    QVERIFY(!handle.blocked());
}

void ConnectionTest::assignedBlockerUnblocksItsFirst()
{
    sigslot::signal<> signal;
    const sigslot::connection first = signal.connect(counting());
    const sigslot::connection second = signal.connect(counting());
    sigslot::connection_blocker blocker = first.blocker();
    blocker = second.blocker();
    QVERIFY(!first.blocked());
    QVERIFY(second.blocked());
}

void ConnectionTest::scopedConnectionDisconnects()
{
    sigslot::signal<> signal;
    {
        sigslot::scoped_connection scoped = signal.connect(counting());
        QVERIFY(scoped.connected());
        signal();
    }
    signal();
    QCOMPARE(m_calls, 1);
}

void ConnectionTest::movedScopedConnectionKeepsTheSlot()
{
    sigslot::signal<> signal;
    auto first = std::make_unique<sigslot::scoped_connection>(signal.connect(counting()));
    {
        const sigslot::scoped_connection second = std::move(*first);
        first.reset();
        QVERIFY(second.connected());
    }
    QCOMPARE(signal.slot_count(), std::size_t(0));
}

void ConnectionTest::assignedScopedConnectionDropsItsFirst()
{
    sigslot::signal<> signal;
    const sigslot::connection first = signal.connect(counting());
    const sigslot::connection second = signal.connect(counting());
    sigslot::scoped_connection scoped = first;
    scoped = second;
    QVERIFY(!first.connected());
    QVERIFY(second.connected());
    scoped = sigslot::scoped_connection();
    QVERIFY(!second.connected());
}

void ConnectionTest::scopedConnectionOutlivesItsSignal()
{
    std::optional<sigslot::signal<>> signal(std::in_place);
    const sigslot::scoped_connection scoped = signal->connect(counting());
    signal.reset();
    QVERIFY(!scoped.valid());
}

void ConnectionTest::slotObjectGoesWithTheConnection()
{
    sigslot::signal<> signal;
    const auto held = std::make_shared<int>(0);
    sigslot::connection handle = signal.connect([held] { ++*held; });
    QCOMPARE(held.use_count(), 2L);
    handle.disconnect();
    QCOMPARE(held.use_count(), 1L);
    QVERIFY(!handle.valid());
}

void ConnectionTest::slotCountCountsBlockedSlots()
{
    sigslot::signal<> signal;
    sigslot::connection handle = signal.connect(counting());
    signal.connect(counting(), 3);
    handle.block();
    signal.block();
    QCOMPARE(signal.slot_count(), std::size_t(2));
}

void ConnectionTest::movedSignalKeepsItsSlots()
{
    sigslot::signal<> from;
    from.connect(counting());
    sigslot::connection handle = from.connect(counting());
    sigslot::signal<> to(std::move(from));
    to();
    QCOMPARE(m_calls, 2);
    QVERIFY(handle.disconnect());
    to();
    QCOMPARE(m_calls, 3);
}

void ConnectionTest::assignedSignalDropsItsOwnSlots()
{
    sigslot::signal<> from;
    sigslot::signal<> to;
    const sigslot::connection dropped = to.connect([] { QFAIL("a dropped slot was called"); });
    const sigslot::connection kept = from.connect(counting());
    to = std::move(from);
    to();
    QCOMPARE(m_calls, 1);
    QVERIFY(kept.connected());
    QCOMPARE(to.slot_count(), std::size_t(1));
}

void ConnectionTest::movedFromSignalIsUsable()
{
    sigslot::signal<> from;
    from.connect([] { QFAIL("the slot went with the other signal"); });
    const sigslot::signal<> to(std::move(from));
    from();
    from.connect(counting());
    from();
    QCOMPARE(m_calls, 1);
    QCOMPARE(from.slot_count(), std::size_t(1));
}

void ConnectionTest::blockedSignalMovesBlocked()
{
    sigslot::signal<> from;
    from.connect(counting());
    from.block();
    sigslot::signal<> to(std::move(from));
    QVERIFY(to.blocked());
    to();
    QCOMPARE(m_calls, 0);
}

QTEST_GUILESS_MAIN(ConnectionTest)
#include "connectiontest.moc"
