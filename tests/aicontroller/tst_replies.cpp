#include "controllertest.h"

/// The reply to a generation request.
class RepliesTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void acceptedRequestKeepsItsId();
    void acceptedReplyDoesNotPollByItself();
    void strangeReplyEndsAsTheInterfaceSays_data();
    void strangeReplyEndsAsTheInterfaceSays();
    void pictureRequestEndsInTheSameWays_data();
    void pictureRequestEndsInTheSameWays();
    void acceptedWithoutAnIdKeepsTheEarlierOne_data();
    void acceptedWithoutAnIdKeepsTheEarlierOne();
    void anyIdIsSentBack_data();
    void anyIdIsSentBack();
    void repliesOfTwoQuestionsAreBothRead();
    void laterReplyOfTheFirstQuestionWins();

private:
    void checkEnding(const QString &ending, const QString &line, const QString &message);
};

namespace {

// Rows of a reply, the signal that it ends in (empty: accepted), the log line, and the message of the error item.
void addReplies()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("ending");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");

    const QString failedEnding = QStringLiteral("requestFailed:1");
    const QString errorEnding = QStringLiteral("errorOccured:1");
    const QString notJson = QStringLiteral("Failed to parse JSON response.");
    const QString noCode = QStringLiteral("onRequestFinished, rootObj not contain code");
    const QString refused = QStringLiteral("request failed!");

    QTest::newRow("empty body") << QByteArray("") << failedEnding << notJson << QString();
    QTest::newRow("text") << QByteArray("busy") << failedEnding << notJson << QString();
    QTest::newRow("cut JSON") << QByteArray("{\"code\":0") << failedEnding << notJson << QString();
    QTest::newRow("text behind JSON") << QByteArray("{\"code\":0} x") << failedEnding << notJson << QString();
    QTest::newRow("invalid UTF-8") << QByteArray("{\"code\":0,\"x\":\"\xFF\xFE\"}") << failedEnding << notJson
                                   << QString();
    QTest::newRow("a number") << QByteArray("7") << failedEnding << notJson << QString();
    QTest::newRow("a string") << QByteArray("\"code\"") << failedEnding << notJson << QString();
    QTest::newRow("null") << QByteArray("null") << failedEnding << notJson << QString();
    QTest::newRow("an array") << QByteArray("[{\"code\":0}]") << failedEnding << noCode << QString();
    QTest::newRow("no code") << QByteArray("{\"data\":{\"reqId\":\"r\"}}") << failedEnding << noCode << QString();
    QTest::newRow("refused") << QByteArray(R"({"code":3,"message":"too many"})") << errorEnding << refused
                             << QStringLiteral("too many");
    QTest::newRow("refused, code 1") << QByteArray(R"({"code":1,"message":"m"})") << errorEnding << refused
                                     << QStringLiteral("m");
    QTest::newRow("refused, negative") << QByteArray(R"({"code":-1,"message":"m"})") << errorEnding << refused
                                       << QStringLiteral("m");
    QTest::newRow("refused with data") << QByteArray(R"({"code":2,"data":{"reqId":"r"}})") << errorEnding << refused
                                       << QString();
    QTest::newRow("code as a string") << QByteArray(R"({"code":"0","data":{"reqId":"r"}})") << errorEnding << refused
                                      << QString();
    QTest::newRow("code null") << QByteArray(R"({"code":null,"data":{"reqId":"r"}})") << errorEnding << refused
                               << QString();
    QTest::newRow("code false") << QByteArray(R"({"code":false})") << errorEnding << refused << QString();
    QTest::newRow("code a fraction") << QByteArray(R"({"code":0.5})") << errorEnding << refused << QString();
    QTest::newRow("message no string") << QByteArray(R"({"code":3,"message":{"a":1}})") << errorEnding << refused
                                       << QString();
    QTest::newRow("message with emoji") << QByteArray("{\"code\":3,\"message\":\"\\\"\xF0\x9F\x98\x80\\\"\"}")
                                        << errorEnding << refused << QStringLiteral("\"\U0001F600\"");
}

} // namespace

void RepliesTest::acceptedRequestKeepsItsId()
{
    QVERIFY(f->askText(QStringLiteral("question"), ControllerFixture::accepted(QStringLiteral("id-7"))));
    QCOMPARE(f->d.strReqId, QStringLiteral("id-7"));
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->signalled.summary(), QString());
}

void RepliesTest::acceptedReplyDoesNotPollByItself()
{
    QVERIFY(f->askText());
    settle();
    QCOMPARE(f->server.requestCount(), 1);
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->d.nTickCount, 0);
}

void RepliesTest::strangeReplyEndsAsTheInterfaceSays_data()
{
    addReplies();
}

void RepliesTest::strangeReplyEndsAsTheInterfaceSays()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, ending);
    QFETCH(QString, line);
    QFETCH(QString, message);
    f->d.pictureInfo.width = 1; // of an earlier picture: not part of a text question's error
    QVERIFY(f->askText(QStringLiteral("asked"), ScriptedAnswer::bytes(reply)));
    checkEnding(ending, line, message);
    const auto item = f->signalled.requestFailed.count() > 0 ? f->signalled.requestFailed.argument<0>(0)
                                                             : f->signalled.errorOccured.argument<0>(0);
    QVERIFY(item.type == QuestionType::Text);
    QCOMPARE(item.question, std::string("asked"));
    QCOMPARE(item.picInfo.width, 3840);
}

void RepliesTest::pictureRequestEndsInTheSameWays_data()
{
    addReplies();
}

void RepliesTest::pictureRequestEndsInTheSameWays()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, ending);
    QFETCH(QString, line);
    QFETCH(QString, message);
    QVERIFY(f->askPicture(ControllerFixture::pictureInfo(), ScriptedAnswer::bytes(reply)));
    checkEnding(ending, line, message);
    const auto item = f->signalled.requestFailed.count() > 0 ? f->signalled.requestFailed.argument<0>(0)
                                                             : f->signalled.errorOccured.argument<0>(0);
    QVERIFY(item.type == QuestionType::Picture);
    QCOMPARE(item.question, std::string("a mountain"));
    QCOMPARE(item.picInfo.width, 640);
    QCOMPARE(item.picInfo.style, std::string("oil"));
}

void RepliesTest::checkEnding(const QString &ending, const QString &line, const QString &message)
{
    QCOMPARE(f->signalled.summary(), ending);
    QCOMPARE(f->log.count(line), 1);
    QVERIFY(!f->isTimerActive());
    QVERIFY(f->d.strReqId.isEmpty());
    if (f->signalled.errorOccured.count() > 0)
        QCOMPARE(QString::fromStdString(f->signalled.errorOccured.argument<0>(0).message), message);
    else
        QVERIFY(f->signalled.requestFailed.argument<0>(0).message.empty());
}

void RepliesTest::acceptedWithoutAnIdKeepsTheEarlierOne_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("no data") << QByteArray(R"({"code":0})");
    QTest::newRow("data without an id") << QByteArray(R"({"code":0,"data":{}})");
    QTest::newRow("data an array") << QByteArray(R"({"code":0,"data":["reqId"]})");
    QTest::newRow("data a string") << QByteArray(R"({"code":0,"data":"reqId"})");
    QTest::newRow("data null") << QByteArray(R"({"code":0.0,"data":null})");
}

void RepliesTest::acceptedWithoutAnIdKeepsTheEarlierOne()
{
    QFETCH(QByteArray, reply);
    f->d.strReqId = QStringLiteral("earlier");
    QVERIFY(f->askText(QStringLiteral("question"), ScriptedAnswer::bytes(reply)));
    QCOMPARE(f->d.strReqId, QStringLiteral("earlier"));
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->isTimerActive());
}

void RepliesTest::anyIdIsSentBack_data()
{
    QTest::addColumn<QString>("reqId");
    QTest::newRow("quotes") << QStringLiteral("a\"b\\c/");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600\u4e2d");
    QTest::newRow("100 kB") << QString(100 * 1024, QLatin1Char('i'));
}

void RepliesTest::anyIdIsSentBack()
{
    QFETCH(QString, reqId);
    QVERIFY(f->askText(QStringLiteral("question"), ControllerFixture::accepted(reqId)));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->server.requests().last().json().value(QLatin1String("reqId")).toString(), reqId);
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
}

void RepliesTest::repliesOfTwoQuestionsAreBothRead()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r1")).held());
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::failed(QStringLiteral("full")).held());
    f->controller.generateText(QStringLiteral("one"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->controller.generateText(QStringLiteral("two"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 2; }));
    QVERIFY(f->server.releaseNext());
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("r1"); }));
    QVERIFY(f->isTimerActive());
    QVERIFY(f->server.releaseNext());
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("errorOccured:1"));
    QCOMPARE(f->signalled.errorOccured.argument<0>(0).question, std::string("two"));
    QCOMPARE(f->d.historyArray.size(), 2);
}

void RepliesTest::laterReplyOfTheFirstQuestionWins()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r1")).held());
    f->controller.generateText(QStringLiteral("one"));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted(QStringLiteral("r2")));
    f->controller.generatePicture(ControllerFixture::pictureInfo());
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("r2"); }));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QVERIFY(f->d.bPictureMode);
}

QTEST_GUILESS_MAIN(RepliesTest)
#include "tst_replies.moc"
