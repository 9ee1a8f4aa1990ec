#include "controllertest.h"

#include <thread>

Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

/// Stopping at each moment of a request.
class StopTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void stopOnlySetsFlags();
    void stopBeforeTheReply_data();
    void stopBeforeTheReply();
    void stopBeforeTheReplyThatFails();
    void stopBetweenPolls();
    void stopWhileAPollIsOut_data();
    void stopWhileAPollIsOut();
    void tickWhileAStoppedPollIsOut();
    void stopWhenIdle();
    void stopWithoutAnId();
    void nextQuestionForgetsTheStop_data();
    void nextQuestionForgetsTheStop();
    void stopWithinALargeReply();
    void stopFromAnotherThread();
    void clientsHearOfTheStop_data();
    void clientsHearOfTheStop();

private:
    void startHeldPoll(const ScriptedAnswer &reply = ControllerFixture::readyText());
};

void StopTest::startHeldPoll(const ScriptedAnswer &reply)
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(), reply.held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
}

void StopTest::stopOnlySetsFlags()
{
    startHeldPoll();
    f->controller.stopGenerate();
    QVERIFY(f->d.bStopGenerate);
    QVERIFY(!f->d.bQuerying);
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QCOMPARE(f->signalled.summary(), QString());
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
}

void StopTest::stopBeforeTheReply_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture") << true;
}

void StopTest::stopBeforeTheReply()
{
    QFETCH(bool, isPicture);
    f->server.expect("POST", isPicture ? ControllerFixture::picturePath() : ControllerFixture::textPath(),
                     ControllerFixture::accepted().held());
    if (isPicture)
        f->controller.generatePicture({});
    else
        f->controller.generateText(QStringLiteral("q"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->controller.stopGenerate();
    QVERIFY(f->isTimerActive());
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->signalled.summary(), QString());
}

void StopTest::stopBeforeTheReplyThatFails()
{
    f->server.expect("POST", ControllerFixture::textPath(), ScriptedAnswer::status(500).held());
    f->controller.generateText(QStringLiteral("q"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->controller.stopGenerate();
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(!f->isTimerActive());
}

void StopTest::stopBetweenPolls()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::working()));
    f->controller.stopGenerate();
    f->tick();
    QCOMPARE(f->openReplies(), 0);
    QVERIFY(!f->isTimerActive());
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->d.nTickCount, 2);
    QCOMPARE(f->signalled.summary(), QString());
}

void StopTest::stopWhileAPollIsOut_data()
{
    QTest::addColumn<ScriptedAnswer>("reply");
    QTest::newRow("ready") << ControllerFixture::readyText();
    QTest::newRow("working") << ControllerFixture::working();
    QTest::newRow("failed") << ControllerFixture::failed(QStringLiteral("why"));
    QTest::newRow("not JSON") << ScriptedAnswer::bytes("x");
    QTest::newRow("status 500") << ScriptedAnswer::status(500);
}

void StopTest::stopWhileAPollIsOut()
{
    QFETCH(ScriptedAnswer, reply);
    startHeldPoll(reply);
    f->controller.stopGenerate();
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QCOMPARE(f->d.historyArray.size(), 1);
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(!f->log.contains(QStringLiteral("Thinking...")));
}

void StopTest::tickWhileAStoppedPollIsOut()
{
    startHeldPoll();
    f->controller.stopGenerate();
    f->tick();
    QCOMPARE(f->openReplies(), 1);
    QVERIFY(!f->isTimerActive());
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QString());
}

void StopTest::stopWhenIdle()
{
    f->controller.stopGenerate();
    QVERIFY(f->d.bStopGenerate);
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
}

// Without an id a tick does not get as far as the stop.
void StopTest::stopWithoutAnId()
{
    f->controller.startTimer();
    f->controller.stopGenerate();
    f->tick();
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->log.count(QStringLiteral("current answers have beeen returned!")), 1);
}

void StopTest::nextQuestionForgetsTheStop_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture") << true;
}

// The reply of the stopped poll then counts again: the controller follows one request and cannot tell them apart.
void StopTest::nextQuestionForgetsTheStop()
{
    QFETCH(bool, isPicture);
    startHeldPoll();
    f->controller.stopGenerate();
    QVERIFY(!f->d.bQuerying);
    f->server.expect("POST", isPicture ? ControllerFixture::picturePath() : ControllerFixture::textPath(),
                     ControllerFixture::accepted(QStringLiteral("r2")));
    if (isPicture)
        f->controller.generatePicture(ControllerFixture::pictureInfo());
    else
        f->controller.generateText(QStringLiteral("next"));
    QVERIFY(!f->d.bStopGenerate);
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("r2"); }));
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    f->tick();
    QVERIFY(eventually([&] { return f->server.requestCountTo(ControllerFixture::resultPath()) == 2; }));
    QVERIFY(eventually([&] { return !f->d.bQuerying; }));
    QCOMPARE(f->signalled.summary(), QString());
    f->controller.stopGenerate();
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
}

void StopTest::stopWithinALargeReply()
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(),
                     ScriptedAnswer::large("{\"code\":1,\"x\":\"", 'x', 1000000, "\"}").heldAfter(500000));
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->controller.stopGenerate();
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QVERIFY(!f->isTimerActive());
    QVERIFY(!f->log.contains(QStringLiteral("Thinking...")));
}

void StopTest::stopFromAnotherThread()
{
    startHeldPoll();
    std::thread([this] { f->controller.stopGenerate(); }).join();
    QVERIFY(eventually([&] { return f->d.bStopGenerate && !f->d.bQuerying; }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QString());
}

void StopTest::clientsHearOfTheStop_data()
{
    QTest::addColumn<int>("moment");
    QTest::addColumn<bool>("server");
    for (const bool server : {true, false}) {
        QTest::addRow("generation reply, server %d", server) << 0 << server;
        QTest::addRow("tick, server %d", server) << 1 << server;
        QTest::addRow("poll reply, server %d", server) << 2 << server;
    }
}

void StopTest::clientsHearOfTheStop()
{
    QFETCH(int, moment);
    QFETCH(bool, server);
    f->useRoles({server, false, true});
    if (moment == 0) {
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted().held());
        f->controller.generateText(QStringLiteral("q"));
        QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    } else if (moment == 1) {
        QVERIFY(f->askText());
    } else {
        startHeldPoll();
    }
    f->controller.stopGenerate();
    QVERIFY(f->serverPort.calls.isEmpty());
    if (moment == 1)
        f->tick();
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"DeleteGeneratingItem"} : QVector<QByteArray>());
    QCOMPARE(f->signalled.summary(), QString()); // the local panel removes its item by itself
}

QTEST_GUILESS_MAIN(StopTest)
#include "tst_stop.moc"
