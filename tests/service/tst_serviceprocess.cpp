#include "serviceclient.h"

#include <QSet>
#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

class ServiceProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersManyClientsAtOnce();
    void idleConnectionsGiveWay();
    void keepsAConnectionForManyRequests();
    void clientsThatHangUpGetTheirReplyAndTheEnd_data();
    void clientsThatHangUpGetTheirReplyAndTheEnd();
    void slowClientsLoseTheirConnection_data();
    void slowClientsLoseTheirConnection();
    void logsOneLinePerRequestAndNoSecrets();
    void stopsOnSignal_data();
    void stopsOnSignal();
    void stopsWhileItDraws();
    void aSecondServiceCannotTakeThePort();
    void namesAnAddressOfAnotherMachine();
    void endsWithAMessageOnBadOptions();
    void printsItsVersion();
};

void ServiceProcessTest::answersManyClientsAtOnce()
{
    constexpr int count = 50;
    ServiceProcess service;
    QVERIFY(service.start());
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < count; ++i) {
        clients.push_back(std::make_unique<RawClient>(service.port()));
    }
    for (int i = 0; i < count; ++i) {
        clients[static_cast<size_t>(i)]->send(
            postBytes(paths::text, question("stop layer " + QByteArray::number(i + 1))));
    }
    QSet<QString> ids;
    for (int i = 0; i < count; ++i) {
        const QString id = requestIdOf(jsonOf(clients[static_cast<size_t>(i)]->readReply()));
        QVERIFY(!id.isEmpty());
        ids.insert(id);
        const QString answer = firstAnswerOf(ServiceClient(service).result(false, id));
        QCOMPARE(answer, QStringLiteral("Stopping layer %1.").arg(i + 1));
    }
    QCOMPARE(ids.size(), count);
}

// More open connections than threads: the idle ones must not keep a new client out.
void ServiceProcessTest::idleConnectionsGiveWay()
{
    ServiceProcess service;
    QVERIFY(service.start());
    std::vector<std::unique_ptr<ServiceClient>> clients;
    for (int i = 0; i < 150; ++i) {
        clients.push_back(std::make_unique<ServiceClient>(service));
        QCOMPARE(statusOf(clients.back()->get("/healthz")), 200);
    }
}

void ServiceProcessTest::keepsAConnectionForManyRequests()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    for (int i = 0; i < 30; ++i) {
        QCOMPARE(statusOf(client.get("/healthz")), 200);
    }
}

void ServiceProcessTest::clientsThatHangUpGetTheirReplyAndTheEnd_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    QTest::newRow("after their request") << getBytes("/healthz") << 200;
    QTest::newRow("within it") << QByteArray("GET /healthz HTTP/1.1\r\nHost: 127") << 0;
}

void ServiceProcessTest::clientsThatHangUpGetTheirReplyAndTheEnd()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--client-seconds"), QStringLiteral("3600")}));
    RawClient client(service.port());
    client.sendAndHangUp(request);
    QTEST(statusOf(client.readReply()), "status");
    QVERIFY(client.waitForClose());
}

void ServiceProcessTest::slowClientsLoseTheirConnection_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("says nothing") << QByteArray();
    QTest::newRow("half a head") << QByteArray("POST /ai/result/filter/ HTTP/1.1\r\nHost:");
    QTest::newRow("half a body") << QByteArray(
        "POST /ai/result/filter/ HTTP/1.1\r\nHost: x\r\nContent-Length: 50\r\n\r\n{\"type\"");
    QTest::newRow("endless head") << "GET /healthz HTTP/1.1\r\n"
            + QByteArray("X-Filler: abcdefghijklmnopqrstuvwxyz\r\n").repeated(4000);
}

void ServiceProcessTest::slowClientsLoseTheirConnection()
{
    QFETCH(QByteArray, request);
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--client-seconds"), QStringLiteral("1")}));
    RawClient slow(service.port());
    slow.send(request);
    QVERIFY(slow.waitForClose());
    QCOMPARE(statusOf(ServiceClient(service).get("/healthz")), 200);
}

void ServiceProcessTest::logsOneLinePerRequestAndNoSecrets()
{
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_TOKEN"), QStringLiteral("secret-word"));
    QVERIFY(service.start());
    ServiceClient client(service, "token: secret-word\r\n");
    const QString id = requestIdOf(client.post(paths::text, question("a private question")));
    client.result(false, id);
    client.get("/secret-path");
    const QString address = firstAnswerOf(client.picture(pictureWish("a private picture")));
    client.get(QUrl(address).path().toLatin1());
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
    const QByteArray log = service.standardError();
    QVERIFY2(
        log.contains("event=request id=" + id.toLatin1() + " endpoint=/ai/texttotext/generate/ status=200 code=0 ms="),
        log.constData());
    QCOMPARE(log.count("endpoint=other status=404"), 1);
    QCOMPARE(log.count("endpoint=/pictures/ status=200"), 1);
    QVERIFY(!log.contains("secret"));
    QVERIFY(!log.contains("private"));
    QVERIFY(!log.contains(address.section(QLatin1Char('/'), -1).toLatin1()));
}

void ServiceProcessTest::stopsOnSignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void ServiceProcessTest::stopsOnSignal()
{
    QFETCH(int, number);
    ServiceProcess service;
    QVERIFY(service.start(endlessWork()));
    ServiceClient idle(service);
    QCOMPARE(codeOf(idle.post(paths::text, question("stop layer 1"))), 0);
    RawClient half(service.port());
    half.send("POST /ai/result/filter/ HTTP/1.1\r\nHost:");
    service.signal(number);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceProcessTest::stopsWhileItDraws()
{
    ServiceProcess service;
    QVERIFY(service.start());
    ServiceClient client(service);
    const QString id = requestIdOf(client.post(paths::picture, pictureWish("sea", 7680, 4320)));
    QCOMPARE(codeOf(client.post(paths::poll, poll(true, id))), 1);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void ServiceProcessTest::aSecondServiceCannotTakeThePort()
{
    ServiceProcess first;
    QVERIFY(first.start());
    ServiceProcess second;
    const QString address = QStringLiteral("127.0.0.1:%1").arg(first.port());
    QCOMPARE(second.runToEnd({QStringLiteral("--listen"), address}), 1);
    QVERIFY(
        second.standardError().contains("cannot listen on http://" + address.toLatin1() + ": the address is in use."));
}

void ServiceProcessTest::namesAnAddressOfAnotherMachine()
{
    ServiceProcess service;
    // Kept free for documentation: no machine has it.
    QCOMPARE(service.runToEnd({QStringLiteral("--listen"), QStringLiteral("192.0.2.1:0")}), 1);
    QVERIFY(service.standardError().contains("the address is not this machine's."));
}

void ServiceProcessTest::endsWithAMessageOnBadOptions()
{
    ServiceProcess service;
    QCOMPARE(service.runToEnd({QStringLiteral("--engine"), QStringLiteral("other")}), 2);
    QVERIFY(service.standardError().contains("--engine must be builtin"));
}

void ServiceProcessTest::printsItsVersion()
{
    ServiceProcess service;
    QCOMPARE(service.runToEnd({QStringLiteral("--version")}), 0);
    QVERIFY(service.standardError().isEmpty());
}

QTEST_GUILESS_MAIN(ServiceProcessTest)
#include "tst_serviceprocess.moc"
