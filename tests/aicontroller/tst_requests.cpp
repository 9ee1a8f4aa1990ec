#include "controllertest.h"
#include "support/jsonshape.h"

#include <QElapsedTimer>
#include <QJsonArray>

#include <thread>

/// How a question is posted, and what it changes. The bodies: tst_requestbodies.
class RequestsTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void twoQuestionsInARowAreBothInTheConversation();
    void answersJoinTheConversation();
    void pictureRequestsStayOutOfTheConversation();
    void domainIsPrefixedAsItIs_data();
    void domainIsPrefixedAsItIs();
    void emptyDomainFailsOnTheBarePath();
    void questionReplacesTheTrackedState();
    void pictureRequestReplacesTheTrackedState();
    void questionKeepsTheEarlierRequestId();
    void postStartsTheTimerAnew_data();
    void postStartsTheTimerAnew();
    void questionsAskedElsewhereAreQueuedInOrder();

private:
    HttpRequest lastRequest() const { return f->server.requests().last(); }
};

void RequestsTest::twoQuestionsInARowAreBothInTheConversation()
{
    QVERIFY(f->askText(QStringLiteral("one")));
    QVERIFY(f->askText(QStringLiteral("two")));
    const QJsonArray messages = lastRequest().json().value(QLatin1String("messages")).toArray();
    const QString type = QStringLiteral("type");
    const QString content = QStringLiteral("content");
    QCOMPARE(messages,
             (QJsonArray{QJsonObject{{type, false}, {content, QStringLiteral("one")}},
                         QJsonObject{{type, false}, {content, QStringLiteral("two")}}}));
}

void RequestsTest::answersJoinTheConversation()
{
    QVERIFY(f->askText(QStringLiteral("one")));
    QVERIFY(f->poll(ControllerFixture::readyText(QStringLiteral("first"))));
    QVERIFY(f->askText(QStringLiteral("two")));
    const QJsonArray messages = lastRequest().json().value(QLatin1String("messages")).toArray();
    QCOMPARE(messages.size(), 3);
    QCOMPARE(messages.at(1).toObject().value(QLatin1String("type")), QJsonValue(true));
    QCOMPARE(messages.at(1).toObject().value(QLatin1String("content")), QJsonValue(QStringLiteral("first")));
    QCOMPARE(messages.at(2).toObject().value(QLatin1String("type")), QJsonValue(false));
    for (const QJsonValue &message : messages)
        QCOMPARE(shapeOf(message.toObject()), QStringLiteral("content:string type:bool"));
}

void RequestsTest::pictureRequestsStayOutOfTheConversation()
{
    QVERIFY(f->askText());
    QVERIFY(f->askPicture());
    QCOMPARE(f->d.historyArray.size(), 1);
}

void RequestsTest::domainIsPrefixedAsItIs_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("target");
    const QByteArray plain = ControllerFixture::textPath();
    QTest::newRow("plain") << QString() << plain;
    QTest::newRow("with a path") << QStringLiteral("/v1") << "/v1" + plain;
    // Qt sends a path that begins with two slashes with one.
    QTest::newRow("with a slash") << QStringLiteral("/") << plain;
    QTest::newRow("with a path and a slash") << QStringLiteral("/v1/") << "/v1/" + plain;
}

void RequestsTest::domainIsPrefixedAsItIs()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, target);
    f->controller.setDomain(f->server.url() + suffix);
    f->server.expect("POST", target, ControllerFixture::accepted());
    f->controller.generateText(QStringLiteral("question"));
    QCOMPARE(f->d.resultRequest.url().toString(),
             f->server.url() + suffix + QString::fromLatin1(ControllerFixture::textPath()));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
}

void RequestsTest::emptyDomainFailsOnTheBarePath()
{
    const ExpectedLog refusals(f->log, QStringLiteral("only http and https"), 2);
    f->controller.setDomain({});
    f->controller.generateText(QStringLiteral("question"));
    QCOMPARE(f->d.resultRequest.url(), QUrl(QStringLiteral("/ai/texttotext/generate/")));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(!f->isTimerActive());

    f->controller.generatePicture({});
    QCOMPARE(f->d.resultRequest.url(), QUrl(QStringLiteral("/ai/texttoimage/generate/")));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:2"));
}

void RequestsTest::questionReplacesTheTrackedState()
{
    QVERIFY(f->askPicture());
    f->controller.stopGenerate();
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->controller.generateText(QStringLiteral("text"));
    QVERIFY(!f->d.bPictureMode);
    QVERIFY(!f->d.bStopGenerate);
    QCOMPARE(f->d.strPrompt, QStringLiteral("text"));
    QVERIFY(f->d.textReply);
    QVERIFY(f->isTimerActive());
    QVERIFY(f->repliesDone());
    QVERIFY(!f->d.textReply);
}

void RequestsTest::pictureRequestReplacesTheTrackedState()
{
    QVERIFY(f->askText());
    f->controller.stopGenerate();
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    f->controller.generatePicture(ControllerFixture::pictureInfo());
    QVERIFY(f->d.bPictureMode);
    QVERIFY(!f->d.bStopGenerate);
    QCOMPARE(f->d.strPrompt, QStringLiteral("a mountain"));
    QCOMPARE(f->d.pictureInfo.style, std::string("oil"));
    QVERIFY(!f->d.textReply);
    QVERIFY(f->isTimerActive());
    QVERIFY(f->repliesDone());
}

// Until the new id is known, the ticks go on asking for the earlier one.
void RequestsTest::questionKeepsTheEarlierRequestId()
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r2")).held());
    f->controller.generateText(QStringLiteral("two"));
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->d.strReqId, QStringLiteral("r2"));
}

// The remaining time tells a restart, whatever time the machine takes for it.
void RequestsTest::postStartsTheTimerAnew_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture") << true;
}

void RequestsTest::postStartsTheTimerAnew()
{
    QFETCH(bool, isPicture);
    constexpr int interval = 1000000;
    f->d.pQueryTimer->setInterval(interval);
    f->controller.startTimer();
    QVERIFY(eventually([&] { return f->d.pQueryTimer->remainingTime() <= interval - 50; }));

    f->server.always("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->server.always("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    QElapsedTimer elapsed;
    elapsed.start();
    if (isPicture)
        f->controller.generatePicture({});
    else
        f->controller.generateText({});
    const int remaining = f->d.pQueryTimer->remainingTime();
    QVERIFY(remaining >= interval - elapsed.elapsed() - 10);
    QVERIFY(!f->d.pQueryTimer->isSingleShot());
    QVERIFY(f->repliesDone());
}

void RequestsTest::questionsAskedElsewhereAreQueuedInOrder()
{
    f->server.always("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->server.always("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    std::thread([this] {
        f->controller.setToken(QStringLiteral("first"));
        f->controller.generateText(QStringLiteral("one"));
        f->controller.setToken(QStringLiteral("second"));
        f->controller.generatePicture(ControllerFixture::pictureInfo());
    }).join();
    QCOMPARE(f->openReplies(), 0);
    QVERIFY(f->d.historyArray.isEmpty());
    QVERIFY(eventually([&] { return f->server.requestCount() == 2; }));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->server.requestsTo(ControllerFixture::textPath()).at(0).header("token").value(),
             QByteArrayLiteral("first"));
    QCOMPARE(f->server.requestsTo(ControllerFixture::picturePath()).at(0).header("token").value(),
             QByteArrayLiteral("second"));
    QVERIFY(f->d.bPictureMode);
}

QTEST_GUILESS_MAIN(RequestsTest)
#include "tst_requests.moc"
