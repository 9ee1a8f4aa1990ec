#include "serverclient.h"
#include "support/waiting.h"

#include <QTcpSocket>
#include <QTest>

#include <thread>

using namespace tavro::testsupport;

/// The server as a whole. Each kind of answer: tst_scriptedanswer.
class ScriptedServerTest : public ServerClient {
    Q_OBJECT

private Q_SLOTS:
    void recordsTheExactRequest();
    void answersInTurnAndThenTheDefault();
    void keepsEachTargetsRowApart();
    void answersFromAnotherThreadWhileThisOneBlocks();
    void holdsAnAnswerUntilReleased();
    void holdsWithinTheBody();
    void releasesByTarget();
    void countsConnections();
    void closesIdleConnectionsOnly();
    void diesAndComesBack();
    void reportsWhatIsLeft();
    void reportsBytesThatAreNoRequest();
    void splitAndJoinedRequestsAreRead();
};

void ScriptedServerTest::recordsTheExactRequest()
{
    server->expect("POST", path(), ScriptedAnswer::json({{QStringLiteral("code"), 1}}));
    const QByteArray body("{\"a\": \"\xC3\xA4\0\"}", 12);
    QNetworkReply *reply = finished(post(body));
    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(reply->readAll(), QByteArrayLiteral("{\"code\":1}"));

    const HttpRequest request = server->requests().value(0);
    QCOMPARE(request.method, QByteArrayLiteral("POST"));
    QCOMPARE(request.target, path());
    QCOMPARE(request.version, QByteArrayLiteral("HTTP/1.1"));
    QCOMPARE(request.body, body);
    QCOMPARE(request.header("DEVICEID").value(), QByteArrayLiteral("device123"));
    QCOMPARE(request.headerCount("content-type"), 1);
    QVERIFY(!request.header("token"));
    QVERIFY(request.head.startsWith("POST /path/ HTTP/1.1\r\n"));
    QVERIFY(request.head.endsWith("\r\n\r\n"));
    QCOMPARE(request.headers.first().first, QByteArrayLiteral("Host"));
    QCOMPARE(request.connection, 1);
    QVERIFY(server->leftovers().isEmpty());
}

void ScriptedServerTest::answersInTurnAndThenTheDefault()
{
    server->always("POST", path(), ScriptedAnswer::bytes("default"));
    server->expect("POST", path(), ScriptedAnswer::bytes("one"));
    server->expect("POST", path(), ScriptedAnswer::bytes("two"));
    for (const char *expected : {"one", "two", "default", "default"})
        QCOMPARE(bodyOf(post()), QByteArray(expected));
    QCOMPARE(server->requestCountTo(path()), 4);
    QVERIFY(server->leftovers().isEmpty());
}

void ScriptedServerTest::keepsEachTargetsRowApart()
{
    server->expect("POST", "/a", ScriptedAnswer::bytes("a"));
    server->expect("POST", "/b", ScriptedAnswer::bytes("b"));
    server->expect("GET", "/a", ScriptedAnswer::bytes("got"));
    QCOMPARE(bodyOf(post({}, "/b")), QByteArrayLiteral("b"));
    QCOMPARE(bodyOf(manager->get(QNetworkRequest(QUrl(server->url() + QStringLiteral("/a"))))),
             QByteArrayLiteral("got"));
    QCOMPARE(bodyOf(post({}, "/a")), QByteArrayLiteral("a"));
}

void ScriptedServerTest::answersFromAnotherThreadWhileThisOneBlocks()
{
    server->expect("POST", path(), ScriptedAnswer::bytes("answer"));
    QByteArray answer;
    std::thread client([&, port = server->port()] {
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        socket.write("POST /path/ HTTP/1.1\r\nContent-Length: 1\r\n\r\nx");
        while (!answer.endsWith("answer") && socket.waitForReadyRead(static_cast<int>(waitLimit.count())))
            answer += socket.readAll();
    });
    QVERIFY(server->waitForRequests(1, waitLimit));
    client.join();
    QVERIFY(answer.startsWith("HTTP/1.1 200 "));
}

void ScriptedServerTest::holdsAnAnswerUntilReleased()
{
    server->expect("POST", path(), ScriptedAnswer::bytes("late").held());
    QNetworkReply *reply = post();
    QVERIFY(eventually([&] { return server->heldCount() == 1; }));
    QVERIFY(!reply->isFinished());
    QCOMPARE(server->leftovers().size(), 1);
    QVERIFY(server->releaseNext());
    QCOMPARE(bodyOf(reply), QByteArrayLiteral("late"));
    QVERIFY(!server->releaseNext());
    QVERIFY(server->leftovers().isEmpty());
}

void ScriptedServerTest::holdsWithinTheBody()
{
    server->expect("POST", path(), ScriptedAnswer::bytes("firstsecond").heldAfter(5));
    QNetworkReply *reply = post();
    QVERIFY(eventually([=] { return reply->bytesAvailable() == 5; }));
    QVERIFY(eventually([&] { return server->heldCount() == 1; }));
    QVERIFY(!reply->isFinished());
    server->releaseAll();
    QCOMPARE(bodyOf(reply), QByteArrayLiteral("firstsecond"));
}

void ScriptedServerTest::releasesByTarget()
{
    server->expect("POST", "/a", ScriptedAnswer::bytes("a").held());
    server->expect("POST", "/b", ScriptedAnswer::bytes("b").held());
    QNetworkReply *first = post({}, "/a");
    QVERIFY(eventually([&] { return server->heldCount() == 1; }));
    QNetworkReply *second = post({}, "/b");
    QVERIFY(eventually([&] { return server->heldCount() == 2; }));
    QVERIFY(server->release("/b"));
    QCOMPARE(bodyOf(second), QByteArrayLiteral("b"));
    QVERIFY(!first->isFinished());
    QVERIFY(server->releaseNext());
    QCOMPARE(bodyOf(first), QByteArrayLiteral("a"));
}

void ScriptedServerTest::countsConnections()
{
    server->always("POST", path(), ScriptedAnswer::bytes("kept open"));
    for (int request = 0; request < 5; ++request)
        finished(post());
    QCOMPARE(server->connectionsOpened(), 1);
    QCOMPARE(server->connectionsOpen(), 1);
    manager.reset();
    QVERIFY(eventually([&] { return server->connectionsOpen() == 0; }));
}

void ScriptedServerTest::closesIdleConnectionsOnly()
{
    server->expect("POST", "/a", ScriptedAnswer::bytes("a"));
    server->expect("POST", "/b", ScriptedAnswer::bytes("b").held());
    QNetworkReply *waiting = post({}, "/b");
    QVERIFY(eventually([&] { return server->heldCount() == 1; }));
    finished(post({}, "/a"));
    QCOMPARE(server->connectionsOpen(), 2);

    server->closeIdleConnections();
    QVERIFY(eventually([&] { return server->connectionsOpen() == 1; }));
    QVERIFY(!waiting->isFinished());
    server->releaseAll();
    QCOMPARE(bodyOf(waiting), QByteArrayLiteral("b"));
}

void ScriptedServerTest::diesAndComesBack()
{
    server->always("POST", path(), ScriptedAnswer::bytes("alive").held());
    QNetworkReply *cut = post();
    QVERIFY(eventually([&] { return server->heldCount() == 1; }));
    server->stopListening();
    QCOMPARE(server->connectionsOpen(), 0);
    QVERIFY(finished(cut)->error() != QNetworkReply::NoError);
    QCOMPARE(finished(post())->error(), QNetworkReply::ConnectionRefusedError);

    server->always("POST", path(), ScriptedAnswer::bytes("alive"));
    QVERIFY(server->startListening());
    QCOMPARE(bodyOf(post()), QByteArrayLiteral("alive"));
    QVERIFY(server->leftovers().isEmpty());
}

void ScriptedServerTest::reportsWhatIsLeft()
{
    server->expect("POST", path(), ScriptedAnswer::bytes("one"));
    QCOMPARE(server->leftovers(), QStringList{QStringLiteral("never asked for: POST /path/ (1 times)")});
    finished(post());
    QVERIFY(server->leftovers().isEmpty());
    QCOMPARE(finished(post())->error(), QNetworkReply::ContentNotFoundError);
    QCOMPARE(server->leftovers(), QStringList{QStringLiteral("not announced: POST /path/")});
}

void ScriptedServerTest::reportsBytesThatAreNoRequest()
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), server->port());
    socket.write("not http\r\n\r\n");
    QVERIFY(eventually([&] { return server->leftovers() == QStringList{QStringLiteral("no request line")}; }));
    QVERIFY(eventually([&] { return socket.state() == QAbstractSocket::UnconnectedState; }));
    QCOMPARE(server->requestCount(), 0);
}

void ScriptedServerTest::splitAndJoinedRequestsAreRead()
{
    server->always("GET", path(), ScriptedAnswer::bytes("x"));
    server->always("POST", path(), ScriptedAnswer::bytes("y"));
    QTcpSocket socket;
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket.connectToHost(QStringLiteral("127.0.0.1"), server->port());
    socket.write("GET /path/ HTTP/1.1\r\nA: 1\r\n\r\nPOST /path/ HTTP/1.1\r\nContent-Le");
    QVERIFY(eventually([&] { return server->requestCount() == 1; }));
    socket.write("ngth: 3\r\n\r\nab");
    QVERIFY(eventually([&] { return socket.bytesToWrite() == 0; }));
    socket.write("c");
    QVERIFY(eventually([&] { return server->requestCount() == 2; }));
    QCOMPARE(server->requests().at(1).body, QByteArrayLiteral("abc"));
    QVERIFY(eventually([&] { return socket.bytesAvailable() > 0 && socket.peek(10000).endsWith("y"); }));
}

QTEST_GUILESS_MAIN(ScriptedServerTest)
#include "tst_scriptedserver.moc"
