#include "controllertest.h"

Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

/// Broken and unusual connections, for the three requests to the service.
class TransportTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void failedGenerationIsReported_data();
    void failedGenerationIsReported();
    void failedPollIsReported_data();
    void failedPollIsReported();
    void requestIsSentAgainByQtOnly();
    void refusedConnectionIsReported_data();
    void refusedConnectionIsReported();
    void redirectIsNotFollowed();
    void chunkedAndUnboundedRepliesAreRead_data();
    void chunkedAndUnboundedRepliesAreRead();
    void successStatusOtherThan200IsRead();
    void serviceThatDiesAndComesBackIsPolledAgain();
    void connectionClosedBetweenPollsGoesUnnoticed_data();
    void connectionClosedBetweenPollsGoesUnnoticed();
    void connectionIsReused();
    void hugePollReplyIsRead();
    void hugeReplyThatIsNoJsonIsRefused();
    void unfinishedReplyEndsWithTheBudgetAndGoesWithTheController();
    void networkErrorWritesBothLines_data();
    void networkErrorWritesBothLines();

private:
    void checkFailure(const QString &logStart);
};

namespace {

void addFailures()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    const ScriptedAnswer accepted = ControllerFixture::accepted();
    for (const int status : {400, 401, 403, 404, 405, 409, 410, 413, 418, 429, 500, 501, 502, 503, 504})
        QTest::addRow("status %d with a good body", status) << accepted.withStatus(status);
    QTest::newRow("a login is asked for")
        << accepted.withStatus(401).withHeader("WWW-Authenticate", "Basic realm=\"x\"");
    QTest::newRow("closed before the reply") << ScriptedAnswer::drop();
    QTest::newRow("reset before the reply") << ScriptedAnswer::reset();
    QTest::newRow("garbage") << ScriptedAnswer::garbage("SSH-2.0-nothing\r\n");
    QTest::newRow("closed within the body") << accepted.cutAfter(5);
    QTest::newRow("closed behind the head") << accepted.cutAfter(0);
    QTest::newRow("reset within the body") << accepted.resetAfter(5);
}

} // namespace

void TransportTest::checkFailure(const QString &logStart)
{
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    const auto item = f->signalled.requestFailed.argument<0>(0);
    QVERIFY(item.type == QuestionType::Text);
    QCOMPARE(item.question, std::string("question"));
    QVERIFY(item.message.empty());
    QCOMPARE(f->log.texts().filter(QRegularExpression(QLatin1Char('^') + logStart)).size(), 1);
    QVERIFY(!f->isTimerActive());
}

void TransportTest::failedGenerationIsReported_data()
{
    addFailures();
}

void TransportTest::failedGenerationIsReported()
{
    QFETCH(ScriptedAnswer, answer);
    f->server.always("POST", ControllerFixture::textPath(), answer);
    f->controller.generateText(QStringLiteral("question"));
    QVERIFY(f->repliesDone());
    checkFailure(QStringLiteral("Error:"));
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->d.bQuerying);
}

void TransportTest::failedPollIsReported_data()
{
    addFailures();
}

void TransportTest::failedPollIsReported()
{
    QFETCH(ScriptedAnswer, answer);
    QVERIFY(f->askText());
    f->server.always("POST", ControllerFixture::resultPath(), answer);
    f->tick();
    QVERIFY(f->d.bQuerying);
    QVERIFY(f->repliesDone());
    checkFailure(QStringLiteral("Request Error:"));
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
}

void TransportTest::requestIsSentAgainByQtOnly()
{
    f->server.expect("POST", ControllerFixture::textPath(), ScriptedAnswer::drop());
    QVERIFY(f->askText());
    QCOMPARE(f->server.requestCount(), 2);
    QCOMPARE(f->server.requests().at(0).body, f->server.requests().at(1).body);
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QCOMPARE(f->signalled.summary(), QString());
    QCOMPARE(f->d.historyArray.size(), 1);
}

void TransportTest::refusedConnectionIsReported_data()
{
    QTest::addColumn<QString>("domain");
    QTest::newRow("nobody listens") << QStringLiteral("http://127.0.0.1:1");
    QTest::newRow("no scheme") << QStringLiteral("127.0.0.1");
    QTest::newRow("unknown scheme") << QStringLiteral("nothing://127.0.0.1");
    QTest::newRow("no address at all") << QStringLiteral(":/?#");
}

void TransportTest::refusedConnectionIsReported()
{
    QFETCH(QString, domain);
    const bool isRefused = !domain.startsWith(QStringLiteral("http://"));
    const ExpectedLog refusal(f->log, QStringLiteral("only http and https"), isRefused ? 1 : 0);
    f->controller.setDomain(domain);
    f->controller.generateText(QStringLiteral("question"));
    QVERIFY(f->repliesDone());
    checkFailure(QStringLiteral("Error:"));
}

void TransportTest::redirectIsNotFollowed()
{
    const ExpectedLog refusals(f->log, QRegularExpression(QStringLiteral("^refused: .*/elsewhere")), 2);
    QVERIFY(f->askText(QStringLiteral("question"), ScriptedAnswer::redirect(302, "/elsewhere")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(f->log.contains(QStringLiteral("Error: \"answered with status 302, which leads to /elsewhere ")));

    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::redirect(307, f->server.url().toUtf8() + "/elsewhere")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:2"));
    QVERIFY(f->log.contains(QStringLiteral("Request Error: \"answered with status 307, which leads to http://")));
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->server.requestCountTo("/elsewhere"), 0);
}

void TransportTest::chunkedAndUnboundedRepliesAreRead_data()
{
    QTest::addColumn<ScriptedAnswer>("generation");
    QTest::addColumn<ScriptedAnswer>("poll");
    const ScriptedAnswer generation = ControllerFixture::accepted();
    const ScriptedAnswer poll = ControllerFixture::readyText();
    QTest::newRow("chunked") << generation.chunked() << poll.chunked();
    QTest::newRow("until the connection ends") << generation.untilClose() << poll.untilClose();
    QTest::newRow("closed behind each") << generation.thenClose() << poll.thenClose();
    QTest::newRow("in two parts") << generation.heldAfter(4) << poll.heldAfter(4);
}

void TransportTest::chunkedAndUnboundedRepliesAreRead()
{
    QFETCH(ScriptedAnswer, generation);
    QFETCH(ScriptedAnswer, poll);
    f->server.expect("POST", ControllerFixture::textPath(), generation);
    f->controller.generateText(QStringLiteral("q"));
    QVERIFY(eventually(
        [&] { return f->server.heldCount() == (generation.holdOffset() ? 1 : 0) && f->server.requestCount() == 1; }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    f->server.expect("POST", ControllerFixture::resultPath(), poll);
    f->tick();
    QVERIFY(eventually(
        [&] { return f->server.heldCount() == (poll.holdOffset() ? 1 : 0) && f->server.requestCount() >= 2; }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
}

void TransportTest::successStatusOtherThan200IsRead()
{
    QVERIFY(f->askText(QStringLiteral("q"), ControllerFixture::accepted().withStatus(202)));
    QVERIFY(f->poll(ControllerFixture::readyText().withStatus(203)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
}

void TransportTest::serviceThatDiesAndComesBackIsPolledAgain()
{
    QVERIFY(f->askText());
    f->server.stopListening();
    f->tick();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(!f->d.bQuerying);

    QVERIFY(f->server.startListening());
    QVERIFY(f->askText(QStringLiteral("again"), ControllerFixture::accepted(QStringLiteral("r2"))));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1 requestFailed:1"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).question, std::string("again"));
}

void TransportTest::connectionClosedBetweenPollsGoesUnnoticed_data()
{
    QTest::addColumn<bool>("isNoticedFirst");
    QTest::newRow("seen before the next poll") << true;
    QTest::newRow("in a race with the next poll") << false;
}

void TransportTest::connectionClosedBetweenPollsGoesUnnoticed()
{
    QFETCH(bool, isNoticedFirst);
    QVERIFY(f->askText());
    for (int round = 0; round < 3; ++round) {
        QVERIFY(f->poll(ControllerFixture::working()));
        f->server.closeIdleConnections();
        if (isNoticedFirst)
            QVERIFY(eventually([&] { return f->server.connectionsOpen() == 0; }));
    }
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->server.requestCount(), 5);
}

void TransportTest::connectionIsReused()
{
    QVERIFY(f->askText());
    for (int round = 0; round < 10; ++round)
        QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QVERIFY(f->server.connectionsOpened() <= 2);
}

void TransportTest::hugePollReplyIsRead()
{
    constexpr int answerBytes = 15 * 1024 * 1024;
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::large(R"({"code":0,"data":{"answers":[")", 'x', answerBytes, R"("]}})")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).answer.size(), std::size_t(answerBytes));
}

void TransportTest::hugeReplyThatIsNoJsonIsRefused()
{
    QVERIFY(f->askText(QStringLiteral("q"), ScriptedAnswer::large({}, '[', 15 * 1024 * 1024, {})));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QCOMPARE(f->log.count(QStringLiteral("Failed to parse JSON response.")), 1);
}

void TransportTest::unfinishedReplyEndsWithTheBudgetAndGoesWithTheController()
{
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(), ScriptedAnswer::endless().heldAfter(1000000));
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->ticks(11);
    QCOMPARE(f->signalled.summary(), QString());
    f->tick();
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
    QCOMPARE(f->openReplies(), 1);
    f->controller.clear();
    QVERIFY(eventually([&] { return f->server.connectionsOpen() == 0; }));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
}

void TransportTest::networkErrorWritesBothLines_data()
{
    QTest::addColumn<bool>("isPicture");
    QTest::newRow("text") << false;
    QTest::newRow("picture: nobody listens to its errors") << true;
}

void TransportTest::networkErrorWritesBothLines()
{
    QFETCH(bool, isPicture);
    const ScriptedAnswer down = ScriptedAnswer::status(503);
    QVERIFY(isPicture ? f->askPicture({}, down) : f->askText(QStringLiteral("q"), down));
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    const QStringList errors = f->log.texts().filter(QStringLiteral("Error : "));
    const QStringList codes = f->log.texts().filter(QStringLiteral("Error Code : "));
    QCOMPARE(errors.size(), isPicture ? 0 : 1);
    QCOMPARE(codes.size(), isPicture ? 0 : 1);
    if (isPicture)
        return;
    QVERIFY2(errors.at(0).contains(QStringLiteral("QNetworkReply::ServiceUnavailableError")), qPrintable(errors.at(0)));
    QVERIFY2(codes.at(0).endsWith(QStringLiteral("ServiceUnavailableError")), qPrintable(codes.at(0)));
    QVERIFY(!codes.at(0).contains(QStringLiteral("QNetworkReply::")));
    const QStringList all = f->log.texts();
    QVERIFY(all.indexOf(errors.at(0)) < all.indexOf(codes.at(0)));
}

QTEST_GUILESS_MAIN(TransportTest)
#include "tst_transport.moc"
