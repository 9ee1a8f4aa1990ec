// Several connections that one process makes at the same time.

#include "nats/connectturn.h"
#include "support/waiting.h"

#include <QTest>

#include <future>
#include <optional>

using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_ConnectTurn : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void secondWaitsForTheFirst();
    void hurriedAttemptWaitsForNobody();
    void attemptThatBecomesHurriedStopsWaiting();
    void turnIsFreeAgainAfterwards();
};

void tst_ConnectTurn::secondWaitsForTheFirst()
{
    const std::atomic_bool isHurried{false};
    std::optional<ConnectTurn> first(std::in_place, isHurried);
    QVERIFY(first->isHeld());
    std::atomic_bool hasTurn{false};
    auto second = std::async(std::launch::async, [&] {
        const ConnectTurn turn(isHurried);
        hasTurn = turn.isHeld();
    });
    // Several times as long as it takes between two looks.
    QVERIFY(!eventually([&] { return hasTurn.load(); }, std::chrono::milliseconds(300)));
    first.reset();
    second.get();
    QVERIFY(hasTurn);
}

void tst_ConnectTurn::hurriedAttemptWaitsForNobody()
{
    const std::atomic_bool calm{false};
    const std::atomic_bool isHurried{true};
    const ConnectTurn first(calm);
    const ConnectTurn second(isHurried);
    QVERIFY(first.isHeld());
    QVERIFY(!second.isHeld());
}

void tst_ConnectTurn::attemptThatBecomesHurriedStopsWaiting()
{
    const std::atomic_bool calm{false};
    std::atomic_bool isHurried{false};
    const ConnectTurn first(calm);
    auto second = std::async(std::launch::async, [&] { return ConnectTurn(isHurried).isHeld(); });
    isHurried = true;
    QVERIFY(!second.get());
}

void tst_ConnectTurn::turnIsFreeAgainAfterwards()
{
    const std::atomic_bool calm{false};
    const std::atomic_bool isHurried{true};
    {
        const ConnectTurn first(calm);
        const ConnectTurn givenUp(isHurried);
        QVERIFY(!givenUp.isHeld());
    }
    QVERIFY(ConnectTurn(calm).isHeld());
}

QTEST_GUILESS_MAIN(tst_ConnectTurn)
#include "tst_connectturn.moc"
