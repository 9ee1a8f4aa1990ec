#include "serviceclient.h"

#include <QtTest>

#include <csignal>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool takesAllAddresses = true;
#else
constexpr bool takesAllAddresses = false;
#endif

constexpr qint64 mebibyte = 1024 * 1024;
constexpr int patienceMs = 30000;

} // namespace

// The service where threads, memory or a reader of its log are short.
class ServiceShortageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endsWithAMessageWithoutThreads();
    void servesOrEndsWhateverItHas_data();
    void servesOrEndsWhateverItHas();
    void answersThoughNobodyReadsItsLog();
    void doesNotWaitForAReaderOfItsFirstLine();
};

void ServiceShortageTest::endsWithAMessageWithoutThreads()
{
    if (takesAllAddresses) {
        QSKIP("a sanitizer takes more addresses than any limit leaves");
    }
    ServiceProcess service;
    // Enough for the program, not for the stacks of 64 threads.
    service.limitAddressSpace(400 * mebibyte);
    QCOMPARE(service.runToEnd({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--workers"),
                               QStringLiteral("64")}),
             1);
    const QByteArray message = service.standardError();
    QVERIFY2(message.startsWith("assistantservice cannot run: "), message.constData());
    QVERIFY(!service.standardOutput().contains("listening"));
}

void ServiceShortageTest::servesOrEndsWhateverItHas_data()
{
    QTest::addColumn<qint64>("mebibytes");
    for (qint64 mebibytes = 20; mebibytes <= 500; mebibytes += mebibytes < 260 ? 20 : 80) {
        QTest::addRow("%lld MiB", mebibytes) << mebibytes;
    }
}

// Once it says that it listens it goes on, and a large question is an answer or an error.
void ServiceShortageTest::servesOrEndsWhateverItHas()
{
    if (takesAllAddresses) {
        QSKIP("a sanitizer takes more addresses than any limit leaves");
    }
    QFETCH(qint64, mebibytes);
    ServiceProcess service;
    service.limitAddressSpace(mebibytes * mebibyte);
    if (!service.start()) {
        const int code = service.exitCode();
        QVERIFY2(code == 1 || code == 127, service.standardError().constData()); // 127: not even the libraries fit
        QVERIFY(!service.standardError().isEmpty());
        return;
    }
    QByteArray entries;
    for (int i = 0; i < 60000; ++i) {
        entries += "{\"id\":\"" + QByteArray::number(i) + "\",\"name\":\"clip " + QByteArray::number(i) + "\"},";
    }
    const QByteArray body = question("stop layer 1").replace("\"mediaList\":[", "\"mediaList\":[" + entries);
    ServiceClient client(service);
    for (int i = 0; i < 3; ++i) {
        client.post(paths::text, body);
    }
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceShortageTest::answersThoughNobodyReadsItsLog()
{
    constexpr int requests = 1000; // more lines than a pipe holds
    ServiceProcess service;
    QVERIFY(service.logIntoPipe());
    QVERIFY(service.start());
    ServiceClient client(service);
    for (int i = 0; i < requests; ++i) {
        QCOMPARE(statusOf(client.get("/healthz")), 200);
    }
    const QByteArray first = service.readLog();
    QVERIFY(first.size() > 30000);
    QVERIFY(first.count("event=request") < requests);
    QVERIFY(first.endsWith('\n'));
    QCOMPARE(statusOf(client.get("/healthz")), 200);
    QByteArray rest;
    const auto lost = [&rest] {
        const int at = rest.indexOf("level=warning event=log-lost count=");
        return at < 0 ? 0 : rest.mid(at).split('\n').constFirst().split('=').constLast().toInt();
    };
    QTRY_COMPARE_WITH_TIMEOUT((rest += service.readLog(), first + rest).count("event=request") + lost(), requests + 1,
                              patienceMs);
    QVERIFY(lost() > 0);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceShortageTest::doesNotWaitForAReaderOfItsFirstLine()
{
    ServiceProcess service;
    QVERIFY(service.startIntoAFullPipe());
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

QTEST_GUILESS_MAIN(ServiceShortageTest)
#include "tst_serviceshortage.moc"
