#include "serverclient.h"
#include "support/waiting.h"

#include <QTest>

Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

using namespace tavro::testsupport;

/// Each kind of answer, as Qt takes it.
class ScriptedAnswerTest : public ServerClient {
    Q_OBJECT

private Q_SLOTS:
    void endsEarly_data();
    void endsEarly();
    void framesTheBody_data();
    void framesTheBody();
    void sendsALargeBodyWhole();
    void survivesAClientThatLeavesAnEndlessBody();
    void givesRedirectsAndStatuses();
};

void ScriptedAnswerTest::endsEarly_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<int>("requests");
    QTest::addColumn<QByteArray>("received");

    const ScriptedAnswer whole = ScriptedAnswer::bytes("0123456789");
    // Qt sends a request again whose connection ended before the first byte of an answer.
    QTest::newRow("closed before the reply") << ScriptedAnswer::drop() << 2 << QByteArray();
    QTest::newRow("reset before the reply") << ScriptedAnswer::reset() << 2 << QByteArray();
    QTest::newRow("garbage") << ScriptedAnswer::garbage("no http at all\r\n") << 4 << QByteArray();
    QTest::newRow("closed within the body") << whole.cutAfter(4) << 1 << QByteArrayLiteral("0123");
    QTest::newRow("closed behind the head") << whole.cutAfter(0) << 1 << QByteArray();
    QTest::newRow("closed within a chunked body") << whole.chunked().cutAfter(4) << 1 << QByteArrayLiteral("0123");
    QTest::newRow("reset within the body") << whole.resetAfter(4) << 1 << QByteArrayLiteral("0123");
}

void ScriptedAnswerTest::endsEarly()
{
    QFETCH(ScriptedAnswer, answer);
    QFETCH(int, requests);
    QFETCH(QByteArray, received);

    server->always("POST", path(), answer);
    QNetworkReply *reply = finished(post());
    // Whether Qt takes the end of the connection for the end of a chunked body depends on what it reads first.
    if (answer.framing() != ScriptedAnswer::Framing::Chunked)
        QCOMPARE(reply->error(), QNetworkReply::RemoteHostClosedError);
    QCOMPARE(server->requestCount(), requests);
    if (answer.ending() == ScriptedAnswer::Ending::Close)
        QCOMPARE(reply->readAll(), received);
    else
        QVERIFY(received.startsWith(reply->readAll())); // a reset may overtake what was sent before it
}

void ScriptedAnswerTest::framesTheBody_data()
{
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<bool>("isReused");

    const ScriptedAnswer whole = ScriptedAnswer::bytes("0123456789");
    QTest::newRow("with a length") << whole << true;
    QTest::newRow("in chunks") << whole.chunked() << true;
    QTest::newRow("in chunks, empty") << ScriptedAnswer::bytes({}).chunked() << true;
    QTest::newRow("until the connection ends") << whole.untilClose() << false;
    QTest::newRow("closed afterwards") << whole.thenClose() << false;
}

void ScriptedAnswerTest::framesTheBody()
{
    QFETCH(ScriptedAnswer, answer);
    QFETCH(bool, isReused);

    server->always("POST", path(), answer);
    for (int round = 0; round < 2; ++round) {
        QNetworkReply *reply = finished(post());
        QCOMPARE(reply->error(), QNetworkReply::NoError);
        QCOMPARE(reply->readAll(), answer.body().piece(0, 100));
    }
    QCOMPARE(server->requestCount(), 2);
    // Where a connection ends, Qt may open one more than it needs.
    QCOMPARE(server->connectionsOpened() == 1, isReused);
}

void ScriptedAnswerTest::sendsALargeBodyWhole()
{
    constexpr int count = 50 * 1024 * 1024;
    server->expect("POST", path(), ScriptedAnswer::large("[\"", 'x', count, "\"]"));
    const QByteArray body = bodyOf(post());
    QCOMPARE(body.size(), count + 4);
    QVERIFY(body.startsWith("[\"xx"));
    QVERIFY(body.endsWith("xx\"]"));
}

void ScriptedAnswerTest::survivesAClientThatLeavesAnEndlessBody()
{
    server->expect("POST", path(), ScriptedAnswer::endless());
    QNetworkReply *reply = post();
    reply->setReadBufferSize(64 * 1024);
    QVERIFY(eventually([=] { return reply->bytesAvailable() > 0; }));
    QVERIFY(!reply->isFinished());
    reply->abort();
    QVERIFY(eventually([&] { return server->connectionsOpen() == 0; }));
}

void ScriptedAnswerTest::givesRedirectsAndStatuses()
{
    server->expect("POST", path(), ScriptedAnswer::redirect(302, "/elsewhere"));
    QNetworkReply *redirected = finished(post());
    QCOMPARE(redirected->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 302);
    QCOMPARE(redirected->rawHeader("Location"), QByteArrayLiteral("/elsewhere"));

    server->expect("POST", path(), ScriptedAnswer::bytes("why").withStatus(500).withHeader("X-Test", "yes"));
    QNetworkReply *failed = finished(post());
    QCOMPARE(failed->error(), QNetworkReply::InternalServerError);
    QCOMPARE(failed->rawHeader("X-Test"), QByteArrayLiteral("yes"));
    QCOMPARE(failed->readAll(), QByteArrayLiteral("why"));
}

QTEST_GUILESS_MAIN(ScriptedAnswerTest)
#include "tst_scriptedanswer.moc"
