#include "protocol/httpclienttest.h"

#include <QElapsedTimer>
#include <QTest>

using namespace tavro::testsupport;

/// The limit of ten seconds, waited for: the server answers half a second later, or before.
class HttpClientTimeoutTest : public HttpClientTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }
    void lateReplyIsNotOk_data();
    void lateReplyIsNotOk();
};

void HttpClientTimeoutTest::lateReplyIsNotOk_data()
{
    QTest::addColumn<bool>("posts");
    QTest::newRow("get") << false;
    QTest::newRow("post") << true;
}

void HttpClientTimeoutTest::lateReplyIsNotOk()
{
    QFETCH(bool, posts);
    server->expect(posts ? "POST" : "GET", "/a", ScriptedAnswer::bytes("yes").held());
    const ExpectedLog timeout(*log, QStringLiteral("get reply timeout, url: %1/a").arg(server->url()));
    QElapsedTimer time;
    time.start();
    // The answer is never released: one that came after 10.5 s would find nobody.
    const Result result = posts ? post("/a", "{}") : get("/a");
    QVERIFY(!result.ok);
    QVERIFY2(time.elapsed() >= 9990, qPrintable(QString::number(time.elapsed())));
    server->releaseNext();
    server->always(posts ? "POST" : "GET", "/b", ScriptedAnswer::bytes("here"));
    QVERIFY((posts ? post("/b", "{}") : get("/b")).ok);
}

QTEST_GUILESS_MAIN(HttpClientTimeoutTest)
#include "tst_httpclienttimeout.moc"
