#include "controllertest.h"
#include "support/jsonshape.h"

#include <QJsonArray>
#include <QJsonObject>

/// When polls go out and when not. Their replies: tst_answers, tst_pollreplies. Time-outs: tst_timeout.
class PollingTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void pollSendsExactlyTypeAndId_data();
    void pollSendsExactlyTypeAndId();
    void tickWithoutAnIdPollsNothing();
    void tickLogsTheId();
    void workingPollsAgainUntilReady();
    void onlyOnePollIsOut();
    void flagLeftSetKeepsLaterRequestsUnpolled_data();
    void flagLeftSetKeepsLaterRequestsUnpolled();
    void stopOrClearLetsPollsGoOutAgain_data();
    void stopOrClearLetsPollsGoOutAgain();
    void failedPollKeepsTheId();
    void secondQuestionWhileAPollIsOutIsPolledNext();
    void answerOfTheFirstQuestionEndsTheSecond();
    void finishedRequestIsNotPolledAgain();
};

void PollingTest::pollSendsExactlyTypeAndId_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture") << true;
}

void PollingTest::pollSendsExactlyTypeAndId()
{
    QFETCH(bool, isPicture);
    QVERIFY(isPicture ? f->askPicture() : f->askText());
    QVERIFY(f->poll(ControllerFixture::working()));
    const HttpRequest poll = f->server.requests().last();
    QCOMPARE(poll.method, QByteArrayLiteral("POST"));
    QCOMPARE(poll.target, QByteArrayLiteral("/ai/result/filter/"));
    QCOMPARE(shapeOf(poll.json()), QStringLiteral("reqId:string type:bool"));
    QCOMPARE(poll.json().value(QLatin1String("type")).toBool(), isPicture);
    QCOMPARE(poll.json().value(QLatin1String("reqId")).toString(), QStringLiteral("r1"));
}

void PollingTest::tickWithoutAnIdPollsNothing()
{
    f->tick();
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->d.nTickCount, 1);
    QCOMPARE(f->log.count(QStringLiteral("current answers have beeen returned!")), 1);
    QVERIFY(!f->d.bQuerying);
}

void PollingTest::tickLogsTheId()
{
    QVERIFY(f->askText(QStringLiteral("q"), ControllerFixture::accepted(QStringLiteral("id-9"))));
    QVERIFY(f->poll(ControllerFixture::working()));
    QCOMPARE(f->log.texts().filter(QStringLiteral("reqId:")).filter(QStringLiteral("id-9")).size(), 1);
    QVERIFY(!f->log.contains(QStringLiteral("current answers have beeen returned!")));
}

void PollingTest::workingPollsAgainUntilReady()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::working()));
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->isTimerActive());
    QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->log.count(QStringLiteral("Thinking...")), 2);
    QCOMPARE(f->d.historyArray.size(), 2);
    QCOMPARE(f->d.historyArray.at(1).toObject(),
             (QJsonObject{{QStringLiteral("type"), true}, {QStringLiteral("content"), QStringLiteral("hello")}}));
    QVERIFY(!f->isTimerActive());
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->server.requestCount(), 4);
}

void PollingTest::onlyOnePollIsOut()
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working().held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    QVERIFY(f->d.bQuerying);
    f->ticks(3);
    QCOMPARE(f->openReplies(), 1);
    QCOMPARE(f->d.nTickCount, 4);
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 1);
}

void PollingTest::flagLeftSetKeepsLaterRequestsUnpolled_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("no document") << QByteArray("x");
    QTest::newRow("no answers") << QByteArray(R"({"code":0,"data":{}})");
    QTest::newRow("empty answers") << QByteArray(R"({"code":0,"data":{"answers":[]}})");
}

void PollingTest::flagLeftSetKeepsLaterRequestsUnpolled()
{
    QFETCH(QByteArray, reply);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes(reply)));
    QVERIFY(f->askText(QStringLiteral("next")));
    QVERIFY(f->d.bQuerying);
    f->ticks(3);
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 1);
    QVERIFY(f->askPicture());
    f->tick();
    QCOMPARE(f->openReplies(), 0);
}

void PollingTest::stopOrClearLetsPollsGoOutAgain_data()
{
    QTest::addColumn<bool>("byStop");
    QTest::newRow("stopGenerate") << true;
    QTest::newRow("clearCathe") << false;
}

void PollingTest::stopOrClearLetsPollsGoOutAgain()
{
    QFETCH(bool, byStop);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":[]}})")));
    if (byStop)
        f->controller.stopGenerate();
    else
        f->controller.clearCathe();
    QVERIFY(f->askText(QStringLiteral("next")));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
}

void PollingTest::failedPollKeepsTheId()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("why"))));
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QVERIFY(!f->isTimerActive());
}

void PollingTest::secondQuestionWhileAPollIsOutIsPolledNext()
{
    QVERIFY(f->askText(QStringLiteral("one"), ControllerFixture::accepted(QStringLiteral("r1"))));
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working().held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r2")));
    f->controller.generateText(QStringLiteral("two"));
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("r2"); }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->server.requests().last().json().value(QLatin1String("reqId")).toString(), QStringLiteral("r2"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).question, std::string("two"));
}

// One request is followed at a time: an answer is that of the question asked last, whichever it was polled for.
void PollingTest::answerOfTheFirstQuestionEndsTheSecond()
{
    QVERIFY(f->askText(QStringLiteral("one")));
    f->server.expect("POST", ControllerFixture::resultPath(),
                     ControllerFixture::readyText(QStringLiteral("first")).held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r2")));
    f->controller.generateText(QStringLiteral("two"));
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("r2"); }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).question, std::string("two"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).answer, std::string("first"));
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->isTimerActive());
}

void PollingTest::finishedRequestIsNotPolledAgain()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    f->tick();
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->log.count(QStringLiteral("current answers have beeen returned!")), 1);
}

QTEST_GUILESS_MAIN(PollingTest)
#include "tst_polling.moc"
