#include "protocol/httpclienttest.h"
#include "protocol/httpclientwrapper_p.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class HttpClientWrapperTest : public HttpClientTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }
    void getGivesTheBodyAndSendsTheHeaders();
    void postSendsTheBodyAndItsOwnHeadersOverTheCallers();
    void bodyDecidesWhetherItIsAnError_data();
    void bodyDecidesWhetherItIsAnError();
    void statusDecides_data();
    void statusDecides();
    void redirectIsNotFollowed();
    void getLogsTheReplyWhereAsked();
    void postLogsTheRequestWhereAsked();
    void nothingIsLoggedWhereNotAsked();
    void postLogsTheBodyOfAFailure();
    void headerWithALineBreakIsRefused_data();
    void headerWithALineBreakIsRefused();
    void replyThatBreaksOffIsNotOk();
    void unreachableServerIsNotOk();
    void hundredCallsLeaveNothingBehind();
};

namespace {

QStringList texts(const LogCatcher &log)
{
    QStringList texts;
    const QVector<LogLine> lines = log.hostLines();
    for (const LogLine &line : lines)
        texts << line.text.section(QStringLiteral(" \n //"), 0, 0);
    return texts;
}

int openReplies(HttpClientWrapper &wrapper)
{
    return HttpClientWrapperAccess::of(wrapper).manager->findChildren<QNetworkReply *>().size();
}

} // namespace

void HttpClientWrapperTest::getGivesTheBodyAndSendsTheHeaders()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("{\"x\":1}"));
    const Result result = get("/a", {{"token", "t1"}, {"node", "студия"}});
    QVERIFY(result.ok);
    QCOMPARE(result.body, std::string("{\"x\":1}"));
    const HttpRequest request = server->requestsTo("/a").first();
    QCOMPARE(request.header("token").value_or("none"), QByteArray("t1"));
    QCOMPARE(request.header("node").value_or("none"), QByteArray("студия"));
}

void HttpClientWrapperTest::postSendsTheBodyAndItsOwnHeadersOverTheCallers()
{
    server->expect("POST", "/p", ScriptedAnswer::bytes("done"));
    const std::string body("{\"question\":\"\xd0\xb4\xd0\xb0\",\"zero\":\"\0\"}", 31);
    const Result result = post("/p", body, {{"Accept", "text/plain"}, {"content-type", "text/plain"}, {"x", "y"}});
    QVERIFY(result.ok);
    QCOMPARE(result.body, std::string("done"));
    const HttpRequest request = server->requestsTo("/p").first();
    QCOMPARE(request.body, QByteArray::fromStdString(body));
    QCOMPARE(request.header("Accept").value_or("none"), QByteArray("*/*"));
    QCOMPARE(request.header("Content-Type").value_or("none"), QByteArray("application/json"));
    QCOMPARE(request.header("x").value_or("none"), QByteArray("y"));
}

void HttpClientWrapperTest::bodyDecidesWhetherItIsAnError_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("ok");
    QTest::newRow("key") << QByteArray(R"({"error":{"code":1}})") << false;
    QTest::newRow("value") << QByteArray(R"({"kind":"error"})") << false;
    QTest::newRow("seven characters") << QByteArray(R"("error")") << false;
    QTest::newRow("word") << QByteArray(R"({"text":"no error here"})") << true;
    QTest::newRow("capital") << QByteArray(R"({"Error":1})") << true;
    QTest::newRow("escaped") << QByteArray(R"({"text":"an \"error\" of"})") << true;
    QTest::newRow("short") << QByteArray("error\"") << true;
    QTest::newRow("empty") << QByteArray() << true;
}

void HttpClientWrapperTest::bodyDecidesWhetherItIsAnError()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, ok);
    server->expect("GET", "/a", ScriptedAnswer::bytes(body));
    server->expect("POST", "/a", ScriptedAnswer::bytes(body));
    for (const Result &result : {get("/a"), post("/a", "{}")}) {
        QCOMPARE(result.ok, ok);
        QCOMPARE(result.body, ok ? body.toStdString() : std::string());
    }
}

void HttpClientWrapperTest::statusDecides_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {201, 204, 304, 400, 401, 404, 500, 503})
        QTest::newRow(qPrintable(QString::number(status))) << status;
}

void HttpClientWrapperTest::statusDecides()
{
    QFETCH(int, status);
    server->expect("GET", "/a", ScriptedAnswer::status(status));
    server->expect("POST", "/a", ScriptedAnswer::status(status));
    const QString number = QString::number(status);
    const ExpectedLog getError(*log,
                               QStringLiteral("get reply err, url: %1/a, status code: %2").arg(server->url(), number));
    const ExpectedLog postError(*log, QStringLiteral("post reply err, status code: %1").arg(number));
    const ExpectedLog why(*log, QStringLiteral("reply error, url: "), 0);
    QVERIFY(!get("/a").ok);
    QVERIFY(!post("/a", "{}").ok);
}

void HttpClientWrapperTest::redirectIsNotFollowed()
{
    server->expect("GET", "/a", ScriptedAnswer::redirect(302, "/b"));
    const ExpectedLog error(*log, QStringLiteral("status code: 302"));
    QVERIFY(!get("/a").ok);
    QCOMPARE(server->requestCountTo("/b"), 0);
}

void HttpClientWrapperTest::getLogsTheReplyWhereAsked()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("{\"x\":1}"));
    QVERIFY(get("/a", {}, true).ok);
    QCOMPARE(texts(*log), QStringList{QStringLiteral("get reply: {\"x\":1}")});
}

void HttpClientWrapperTest::postLogsTheRequestWhereAsked()
{
    server->expect("POST", "/a", ScriptedAnswer::bytes("yes {}"));
    QVERIFY(post("/a", "{\"q\":\"{}\"}", {{"token", "t1"}}, true).ok);
    QCOMPARE(texts(*log),
             QStringList({QStringLiteral("post url: %1/a").arg(server->url()),
                          QStringLiteral("post headers: token: t1, Accept: */*, Content-Type: application/json"),
                          QStringLiteral("post data: {\"q\":\"{}\"}"), QStringLiteral("post reply: yes {}")}));
}

void HttpClientWrapperTest::nothingIsLoggedWhereNotAsked()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("yes"));
    server->expect("POST", "/a", ScriptedAnswer::bytes("{\"error\":1}"));
    QVERIFY(get("/a").ok);
    QVERIFY(!post("/a", "{}").ok);
    QCOMPARE(texts(*log), QStringList());
}

void HttpClientWrapperTest::postLogsTheBodyOfAFailure()
{
    server->expect("POST", "/a", ScriptedAnswer::bytes("too busy").withStatus(503));
    const ExpectedLog error(*log, QStringLiteral("post reply err, status code: 503"));
    const ExpectedLog why(*log, QStringLiteral("reply error, url: "));
    QVERIFY(!post("/a", "{}", {}, true).ok);
    QCOMPARE(texts(*log).last(), QStringLiteral("post reply: too busy"));
}

void HttpClientWrapperTest::headerWithALineBreakIsRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("line feed in the value") << QByteArray("token") << QByteArray("t\nadmin: yes");
    QTest::newRow("carriage return in the value") << QByteArray("token") << QByteArray("t\radmin: yes");
    QTest::newRow("nul in the value") << QByteArray("token") << QByteArray("t\0x", 3);
    QTest::newRow("line break in the name") << QByteArray("token: x\r\nadmin") << QByteArray("yes");
}

void HttpClientWrapperTest::headerWithALineBreakIsRefused()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    const ExpectedLog refusal(*log, QStringLiteral("a header has a line break in it"), 2);
    const Headers headers{{name.toStdString(), value.toStdString()}};
    QVERIFY(!get("/a", headers).ok);
    QVERIFY(!post("/a", "{}", headers).ok);
    QCOMPARE(server->requestCountTo("/a"), 0);
}

void HttpClientWrapperTest::replyThatBreaksOffIsNotOk()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("{\"x\":\"a long text\"}").cutAfter(5));
    server->expect("POST", "/a", ScriptedAnswer::bytes("{\"x\":\"a long text\"}").cutAfter(5));
    const ExpectedLog why(*log, QStringLiteral("reply error, url: %1/a, ").arg(server->url()), 2);
    QVERIFY(!get("/a").ok);
    QVERIFY(!post("/a", "{}").ok);
}

void HttpClientWrapperTest::unreachableServerIsNotOk()
{
    server->stopListening();
    const ExpectedLog why(*log, QStringLiteral("Connection refused"), 2);
    const ExpectedLog getError(*log, QStringLiteral("get reply err, url: %1/a, status code: 0").arg(server->url()));
    const ExpectedLog postError(*log, QStringLiteral("post reply err, status code: 0"));
    QVERIFY(!get("/a").ok);
    QVERIFY(!post("/a", "{}").ok);
}

void HttpClientWrapperTest::hundredCallsLeaveNothingBehind()
{
    server->always("GET", "/a", ScriptedAnswer::bytes("yes"));
    server->always("POST", "/a", ScriptedAnswer::bytes("yes"));
    int replies = 0;
    for (int call = 0; call < 50; ++call) {
        QVERIFY(get("/a").ok);
        QVERIFY(post("/a", "{}").ok);
        replies = worker->run([this] { return openReplies(*client); });
        QVERIFY2(replies <= 1, qPrintable(QString::number(replies)));
    }
}

QTEST_GUILESS_MAIN(HttpClientWrapperTest)
#include "tst_httpclientwrapper.moc"
