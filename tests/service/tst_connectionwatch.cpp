#include "http/connectionwatch.h"

#include <QtTest>

#include <sys/socket.h>
#include <unistd.h>

using namespace tavro::assistantservice;
using namespace std::chrono_literals;
using Phase = ConnectionWatch::Phase;

namespace {

constexpr int patienceMs = 20000;

// Both ends of a connection that `watch` looks after.
class Pair {
public:
    explicit Pair(ConnectionWatch &watch)
        : m_watch(watch)
    {
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends);
        id = watch.add(m_ends[0]);
    }

    ~Pair()
    {
        m_watch.remove(id);
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }

    Pair(const Pair &) = delete;
    Pair &operator=(const Pair &) = delete;

    void hangUp() const { ::shutdown(m_ends[1], SHUT_WR); }

    // The client sees the end.
    bool isEnded() const
    {
        char byte = 0;
        return ::recv(m_ends[1], &byte, 1, MSG_DONTWAIT) == 0;
    }

    ConnectionWatch::Id id = 0;

private:
    ConnectionWatch &m_watch;
    int m_ends[2];
};

ConnectionWatch::Limits limits(std::chrono::milliseconds request, std::chrono::milliseconds idle, size_t many = 100)
{
    return {request, idle, many};
}

} // namespace

class ConnectionWatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachPhaseHasItsTime_data();
    void eachPhaseHasItsTime();
    void bytesGiveTime();
    void whoHungUpIsEndedUnlessTheReplyIsOwed();
    void whereConnectionsAreShortTheOldestIdleOneGoes();
    void whereNoneIsIdleASlowBodyGoes();
    void aCrowdThatCameAtOnceGoesToo();
    void stoppingEndsWhatWaits();
    void afterStoppingNothingNewStays();
    void tellsWhenAllAreGone();
};

void ConnectionWatchTest::eachPhaseHasItsTime_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<bool>("requestLimited");
    QTest::newRow("new") << static_cast<int>(Phase::New) << true;
    QTest::newRow("idle") << static_cast<int>(Phase::Idle) << false;
    QTest::newRow("receiving") << static_cast<int>(Phase::Receiving) << true;
    QTest::newRow("replying") << static_cast<int>(Phase::Replying) << true;
}

void ConnectionWatchTest::eachPhaseHasItsTime()
{
    QFETCH(int, phase);
    QFETCH(bool, requestLimited);
    ConnectionWatch watch(requestLimited ? limits(1ms, 1h) : limits(1h, 1ms));
    ConnectionWatch other(requestLimited ? limits(1h, 1ms) : limits(1ms, 1h));
    const Pair ended(watch);
    watch.enter(ended.id, static_cast<Phase>(phase));
    const Pair kept(other);
    other.enter(kept.id, static_cast<Phase>(phase));
    const Pair working(watch);
    watch.enter(working.id, Phase::Working);
    QTRY_VERIFY_WITH_TIMEOUT(ended.isEnded(), patienceMs);
    QVERIFY(!kept.isEnded());
    QVERIFY(!working.isEnded());
}

void ConnectionWatchTest::bytesGiveTime()
{
    ConnectionWatch watch(limits(1ms, 1h));
    const Pair fast(watch);
    watch.enter(fast.id, Phase::Receiving);
    watch.countBytes(fast.id, 1000 * 1000 * 1000);
    const Pair slow(watch);
    watch.enter(slow.id, Phase::Receiving);
    QTRY_VERIFY_WITH_TIMEOUT(slow.isEnded(), patienceMs);
    QVERIFY(!fast.isEnded());
}

void ConnectionWatchTest::whoHungUpIsEndedUnlessTheReplyIsOwed()
{
    ConnectionWatch watch(limits(1h, 1h));
    const Pair replying(watch);
    watch.enter(replying.id, Phase::Replying);
    replying.hangUp();
    const Pair working(watch);
    watch.enter(working.id, Phase::Working);
    working.hangUp();
    const Pair receiving(watch);
    watch.enter(receiving.id, Phase::Receiving);
    receiving.hangUp();
    const Pair silent(watch);
    silent.hangUp();
    const Pair there(watch);
    QTRY_VERIFY_WITH_TIMEOUT(receiving.isEnded() && silent.isEnded(), patienceMs);
    QVERIFY(!replying.isEnded() && !working.isEnded() && !there.isEnded());
    watch.enter(replying.id, Phase::Idle);
    QTRY_VERIFY_WITH_TIMEOUT(replying.isEnded(), patienceMs);
}

void ConnectionWatchTest::whereConnectionsAreShortTheOldestIdleOneGoes()
{
    ConnectionWatch watch(limits(1h, 1h, 3));
    const Pair working(watch);
    watch.enter(working.id, Phase::Working);
    const Pair older(watch);
    watch.enter(older.id, Phase::Idle);
    const Pair younger(watch);
    // Who has just come is spared for a moment.
    const auto newcomer = [&] {
        const Pair newest(watch);
        return newest.isEnded();
    };
    QTRY_VERIFY_WITH_TIMEOUT(!newcomer() && older.isEnded(), patienceMs);
    QVERIFY(!younger.isEnded());
    const Pair inItsPlace(watch);
    QTRY_VERIFY_WITH_TIMEOUT(!newcomer() && younger.isEnded(), patienceMs);
    QVERIFY(!newcomer());
    QVERIFY(!working.isEnded());
}

void ConnectionWatchTest::whereNoneIsIdleASlowBodyGoes()
{
    ConnectionWatch watch(limits(1h, 1h, 1));
    const Pair body(watch);
    watch.enter(body.id, Phase::Receiving);
    const auto newcomer = [&] {
        const Pair newest(watch);
        return newest.isEnded();
    };
    QTRY_VERIFY_WITH_TIMEOUT(!newcomer() && body.isEnded(), patienceMs);
}

// None of them is old enough to go when the next one comes, and nobody comes after them.
void ConnectionWatchTest::aCrowdThatCameAtOnceGoesToo()
{
    ConnectionWatch watch(limits(1h, 1h, 2));
    const Pair first(watch);
    const Pair second(watch);
    const Pair third(watch);
    const Pair fourth(watch);
    const auto ended = [&] {
        return int(first.isEnded()) + int(second.isEnded()) + int(third.isEnded()) + int(fourth.isEnded());
    };
    QTRY_COMPARE_WITH_TIMEOUT(ended(), 2, patienceMs);
    QVERIFY(!fourth.isEnded());
}

void ConnectionWatchTest::stoppingEndsWhatWaits()
{
    ConnectionWatch watch(limits(1h, 1h));
    const Pair idle(watch);
    watch.enter(idle.id, Phase::Idle);
    const Pair working(watch);
    watch.enter(working.id, Phase::Working);
    watch.stop();
    QVERIFY(idle.isEnded());
    QVERIFY(!working.isEnded());
    QTRY_VERIFY_WITH_TIMEOUT(working.isEnded(), patienceMs);
}

void ConnectionWatchTest::afterStoppingNothingNewStays()
{
    ConnectionWatch watch(limits(1h, 1h));
    const Pair before(watch);
    watch.enter(before.id, Phase::Replying);
    watch.stop();
    const Pair after(watch);
    QVERIFY(after.isEnded());
    QVERIFY(!before.isEnded());
    watch.enter(before.id, Phase::Idle);
    QVERIFY(before.isEnded());
}

void ConnectionWatchTest::tellsWhenAllAreGone()
{
    ConnectionWatch watch(limits(1h, 1h));
    {
        const Pair one(watch);
        QVERIFY(!watch.waitUntilNone(1ms));
    }
    QVERIFY(watch.waitUntilNone(1ms));
}

QTEST_GUILESS_MAIN(ConnectionWatchTest)
#include "tst_connectionwatch.moc"
