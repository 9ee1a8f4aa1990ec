#include "protocol/httpclienttest.h"
#include "protocol/httpclientwrapper_p.h"

#include <QNetworkAccessManager>
#include <QPointer>
#include <QTest>

#include <system_error>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// A wrapper and the worker that it is given: which threads may use it, and which of the two goes first.
class HttpClientWorkersTest : public HttpClientTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }
    void otherThreadsAreRefused();
    void wrapperWithoutAWorkerRefuses();
    void initWithoutAWorkerThrows();
    void initOnAClosedWorkerThrows();
    void initOnTheWorkersOwnThreadWorks();
    void secondInitTakesAnotherWorker();
    void wrapperOutlivesItsWorker();
    void wrapperOutlivesItsWorkersQueue();
    void wrapperMayGoOnItsWorkersThread();
    void twoWorkersAtOnce();
};

namespace {

template <typename Act>
bool throwsNoState(Act act)
{
    try {
        act();
    } catch (const std::future_error &error) {
        return error.code() == std::future_errc::no_state;
    }
    return false;
}

} // namespace

void HttpClientWorkersTest::otherThreadsAreRefused()
{
    const ExpectedLog refusal(*log, QStringLiteral("not the worker's thread"), 2);
    QVERIFY(!client->get(url("/a"), {}, false).ok);
    QVERIFY(!client->post(url("/a"), {}, "{}", false).ok);
}

void HttpClientWorkersTest::wrapperWithoutAWorkerRefuses()
{
    HttpClientWrapper lonely;
    const ExpectedLog refusal(*log, QStringLiteral("no worker"));
    QVERIFY(!lonely.get(url("/a"), {}, false).ok);
}

void HttpClientWorkersTest::initWithoutAWorkerThrows()
{
    QVERIFY(throwsNoState([this] { client->init(nullptr); }));
}

void HttpClientWorkersTest::initOnAClosedWorkerThrows()
{
    worker->end();
    QVERIFY(throwsNoState([this] { client->init(worker->queue()); }));
}

void HttpClientWorkersTest::initOnTheWorkersOwnThreadWorks()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("yes"));
    HttpClientWrapper own;
    QVERIFY(worker->run([&] {
        own.init(worker->queue());
        return own.get(url("/a"), {}, false).ok;
    }));
}

void HttpClientWorkersTest::secondInitTakesAnotherWorker()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("yes"));
    Worker other;
    client->init(other.queue());
    QVERIFY(other.run([&] { return client->get(url("/a"), {}, false).ok; }));
    client->init(worker->queue());
}

void HttpClientWorkersTest::wrapperOutlivesItsWorker()
{
    server->expect("GET", "/a", ScriptedAnswer::bytes("yes"));
    QVERIFY(get("/a").ok);
    worker->end();
    client.reset();
}

void HttpClientWorkersTest::wrapperOutlivesItsWorkersQueue()
{
    const QPointer<QNetworkAccessManager> manager = HttpClientWrapperAccess::of(*client).manager;
    QVERIFY(manager);
    worker.reset();
    client.reset();
    QVERIFY(!manager);
}

void HttpClientWorkersTest::wrapperMayGoOnItsWorkersThread()
{
    const QPointer<QNetworkAccessManager> manager = HttpClientWrapperAccess::of(*client).manager;
    QVERIFY(manager);
    worker->run([this] {
        client.reset();
        return 0;
    });
    QVERIFY(!manager);
}

void HttpClientWorkersTest::twoWorkersAtOnce()
{
    server->always("GET", "/a", ScriptedAnswer::bytes("yes"));
    server->always("POST", "/a", ScriptedAnswer::bytes("yes"));
    Worker other;
    HttpClientWrapper second;
    second.init(other.queue());
    const auto talk = [this](HttpClientWrapper &wrapper) {
        int good = 0;
        for (int call = 0; call < 10; ++call)
            good += int(wrapper.get(url("/a"), {}, true).ok) + int(wrapper.post(url("/a"), {}, "{}", true).ok);
        return good;
    };
    int first = 0;
    std::thread beside([&] { first = worker->run([&] { return talk(*client); }); });
    const int others = other.run([&] { return talk(second); });
    beside.join();
    QCOMPARE(first, 20);
    QCOMPARE(others, 20);
}

QTEST_GUILESS_MAIN(HttpClientWorkersTest)
#include "tst_httpclientworkers.moc"
