#include "controllertest.h"
#include "roles.h"

#include <limits>

/// The budget of ticks. The ticks are given by hand; the timer's interval counts in the arithmetic only.
class TimeoutTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void defaultsGiveTwelvePollsAndThenTheTimeout();
    void timeoutNamesTheRequest_data();
    void timeoutNamesTheRequest();
    void countCarriesOverToTheNextRequest();
    void countStartsAnewAfterATimeout();
    void failureLeavesTheCount();
    void ticksWithoutAnIdUseTheBudget();
    void budgetFollowsItsSettings_data();
    void budgetFollowsItsSettings();
    void settingsChangedOnTheWayCountAtOnce();
    void productIsASigned32BitOne();
    void clientsTimerKeepsRunning();
    void timeoutIsFiredOrForwarded_data();
    void timeoutIsFiredOrForwarded();
    void pollOutAtTheTimeoutIsStillRead();
    void timeoutWritesNothing();
};

void TimeoutTest::defaultsGiveTwelvePollsAndThenTheTimeout()
{
    QVERIFY(f->askText());
    for (int poll = 1; poll <= 12; ++poll) {
        QVERIFY(f->poll(ControllerFixture::working()));
        QCOMPARE(f->d.nTickCount, poll);
    }
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->signalled.summary(), QString());
    f->tick();
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
    QCOMPARE(f->d.nTickCount, 0);
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 12);
}

void TimeoutTest::timeoutNamesTheRequest_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture") << true;
}

void TimeoutTest::timeoutNamesTheRequest()
{
    QFETCH(bool, isPicture);
    f->controller.setTimeout(0);
    QVERIFY(isPicture ? f->askPicture() : f->askText(QStringLiteral("asked")));
    f->tick();
    const auto item = f->signalled.requestTimeout.argument<0>(0);
    QVERIFY(item.type == (isPicture ? QuestionType::Picture : QuestionType::Text));
    QCOMPARE(item.question, std::string(isPicture ? "a mountain" : "asked"));
    QCOMPARE(item.picInfo.style, std::string(isPicture ? "oil" : ""));
    QVERIFY(item.message.empty());
}

void TimeoutTest::countCarriesOverToTheNextRequest()
{
    QVERIFY(f->askText());
    f->ticks(1);
    QCOMPARE(f->openReplies(), 1);
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    QVERIFY(f->repliesDone());
    QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->d.nTickCount, 4);

    QVERIFY(f->askText());
    QCOMPARE(f->d.nTickCount, 4);
    for (int poll = 1; poll <= 8; ++poll)
        QVERIFY(f->poll(ControllerFixture::working()));
    QCOMPARE(f->signalled.requestTimeout.count(), 0);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    QCOMPARE(f->d.nTickCount, 0);
}

void TimeoutTest::countStartsAnewAfterATimeout()
{
    f->ticks(13);
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    f->ticks(12);
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 2);
}

void TimeoutTest::failureLeavesTheCount()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("why"))));
    QCOMPARE(f->d.nTickCount, 1);
    QVERIFY(f->askText(QStringLiteral("q"), ScriptedAnswer::bytes("x")));
    QCOMPARE(f->signalled.requestFailed.count(), 1);
    QCOMPARE(f->d.nTickCount, 1);
}

void TimeoutTest::ticksWithoutAnIdUseTheBudget()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted().held());
    f->controller.generateText(QStringLiteral("q"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->ticks(12);
    QCOMPARE(f->openReplies(), 1);
    QCOMPARE(f->log.count(QStringLiteral("current answers have beeen returned!")), 12);
    f->tick();
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
}

void TimeoutTest::budgetFollowsItsSettings_data()
{
    QTest::addColumn<int>("timeout");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("polls");
    QTest::newRow("defaults") << 60 << 5 << 12;
    QTest::newRow("no time") << 0 << 5 << 0;
    QTest::newRow("negative time") << -1 << 5 << 0;
    QTest::newRow("less than one interval") << 3 << 5 << 1;
    QTest::newRow("one interval") << 5 << 5 << 1;
    QTest::newRow("not a whole number of intervals") << 11 << 5 << 3;
    QTest::newRow("one second") << 4 << 1 << 4;
}

void TimeoutTest::budgetFollowsItsSettings()
{
    QFETCH(int, timeout);
    QFETCH(int, interval);
    QFETCH(int, polls);
    f->controller.setTimeout(timeout);
    f->controller.setSingleTickTime(interval);
    f->ticks(polls);
    QCOMPARE(f->signalled.requestTimeout.count(), 0);
    QCOMPARE(f->d.nTickCount, polls);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
}

void TimeoutTest::settingsChangedOnTheWayCountAtOnce()
{
    f->ticks(5);
    f->controller.setSingleTickTime(12);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 1); // 5 x 12 s is not less than 60 s
    f->ticks(5);
    f->controller.setTimeout(61);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 2);
}

void TimeoutTest::productIsASigned32BitOne()
{
    f->d.pQueryTimer->setInterval(std::numeric_limits<int>::max());
    f->d.nTickCount = 2; // 2 x (2^31 - 1) is -2 in 32 bits, and that is less than any budget
    f->controller.setTimeout(0);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 0);
    QCOMPARE(f->d.nTickCount, 3);
}

void TimeoutTest::clientsTimerKeepsRunning()
{
    f->useRoles({false, true, false});
    f->controller.startTimer();
    f->ticks(13);
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    QCOMPARE(f->d.nTickCount, 0);
    QVERIFY(f->isTimerActive());
}

void TimeoutTest::timeoutIsFiredOrForwarded_data()
{
    addRoles();
}

void TimeoutTest::timeoutIsFiredOrForwarded()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.setTimeout(0);
    QVERIFY(f->askText(QStringLiteral("asked")));
    f->d.nTickCount = 7;
    f->tick();
    QCOMPARE(f->d.nTickCount, 0);
    QCOMPARE(f->isTimerActive(), client);
    QCOMPARE(f->signalled.requestTimeout.count(), server ? 0 : 1);
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"RequestTimeout"} : QVector<QByteArray>());
    if (server)
        QCOMPARE(f->serverPort.calls.at(0).as<ChatItemBasic>().question, std::string("asked"));
    QVERIFY(f->clientPort.calls.isEmpty());
}

void TimeoutTest::pollOutAtTheTimeoutIsStillRead()
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyText().held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->ticks(12);
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
    QVERIFY(!f->d.bQuerying);
}

void TimeoutTest::timeoutWritesNothing()
{
    f->controller.setTimeout(0);
    QVERIFY(f->askText());
    f->log.forget();
    f->tick();
    QCOMPARE(f->log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(TimeoutTest)
#include "tst_timeout.moc"
