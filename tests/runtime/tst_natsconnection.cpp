// The way to the broker: brokers that come late, go, stall or refuse, and what the operator is told meanwhile.

#include "nats/natsruntime.h"
#include "support/logcatcher.h"
#include "support/natsserver.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;
using Connection = MachineRuntime::Connection;

class tst_NatsConnection : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void unusableOptionsAreTold();
    void lateBrokerIsFound();
    void unknownNameIsTold();
    void secondAddressIsTried();
    void brokerMayComeBack();
    void messageWithoutConnectionIsReported();
    void messagesAreNotSentLater();
    void brokersOwnLimitHolds();
    void nameThatIsNoPartOfASubjectIsRefused();
    void silentBrokerDoesNotHoldTheProgram();
    void stalledBrokerIsGivenUp();
    void silenceOfTheBrokerIsNoticed();
    void groupsDoNotHearEachOther();

private:
    NatsOptions options() const;
    bool is(const NatsRuntime &runtime, Connection connection) const;

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<NatsServer> m_broker;
};

void tst_NatsConnection::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_broker = std::make_unique<NatsServer>();
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
}

void tst_NatsConnection::cleanup()
{
    m_broker.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

NatsOptions tst_NatsConnection::options() const
{
    NatsOptions options;
    options.servers = QStringList{m_broker->url()};
    options.longestRetry = options.firstRetry;
    return options;
}

bool tst_NatsConnection::is(const NatsRuntime &runtime, Connection connection) const
{
    return eventually([&] { return runtime.connection() == connection; });
}

void tst_NatsConnection::unusableOptionsAreTold()
{
    NatsOptions wrong = options();
    wrong.group = QStringLiteral("a group");
    const ExpectedLog told(*m_log, QStringLiteral("the group may have 1 to 64 letters"));
    const ExpectedLog lost(*m_log, QStringLiteral("lost Call: there is no connection"), 2);
    NatsRuntime runtime(Role::ProxyClient, wrong);
    QVERIFY(is(runtime, Connection::Disconnected));
    QVERIFY(runtime.connectionText().contains(QLatin1String("a group")));
    QSignalSpy spy(&runtime, &MachineRuntime::sigMessageLost);
    runtime.sendToServer("Call", nullptr, 0);
    runtime.sendToClients("Call", nullptr, 0);
    QVERIFY(eventually([&spy] { return spy.count() == 2; }));
}

void tst_NatsConnection::lateBrokerIsFound()
{
    m_broker->kill();
    const ExpectedLog told(*m_log, QStringLiteral("cannot be reached"));
    NatsRuntime runtime(Role::ProxyServer, options());
    QSignalSpy changed(&runtime, &MachineRuntime::sigConnectionChanged);
    QVERIFY(is(runtime, Connection::Disconnected));
    QCOMPARE(changed.at(0).at(0).value<Connection>(), Connection::Connecting);
    QVERIFY(runtime.connectionText().contains(m_broker->url()));
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
    QVERIFY(is(runtime, Connection::Connected));
    QCOMPARE(runtime.connectionText(), QStringLiteral("Connected to ") + m_broker->url());
}

// An interface that this machine has not: that needs no list of names to find out.
void tst_NatsConnection::unknownNameIsTold()
{
    NatsOptions lost = options();
    lost.servers = QStringList{QStringLiteral("nats://[fe80::1%25nowhere]")};
    const ExpectedLog told(*m_log, QStringLiteral("cannot be reached: "));
    NatsRuntime runtime(Role::ProxyClient, lost);
    QVERIFY(is(runtime, Connection::Disconnected));
    const QString why = QStringLiteral(" cannot be reached: Name or service not known");
    QCOMPARE(runtime.connectionText(), lost.servers.first() + why);
}

void tst_NatsConnection::secondAddressIsTried()
{
    NatsServer gone;
    QVERIFY(gone.start());
    gone.kill();
    NatsOptions two = options();
    two.servers.prepend(gone.url());
    NatsRuntime runtime(Role::ProxyServer, two);
    QVERIFY(is(runtime, Connection::Connected));
    QCOMPARE(runtime.connectionText(), QStringLiteral("Connected to ") + m_broker->url());
}

void tst_NatsConnection::brokerMayComeBack()
{
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached")), 2);
    Receiver atServer;
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime client(Role::ProxyClient, options());
    atServer.listen(server, "Call");
    QVERIFY(isReady(server, true));
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    for (int round = 1; round <= 3; ++round) {
        m_broker->kill();
        QVERIFY(is(server, Connection::Disconnected) && is(client, Connection::Disconnected));
        QVERIFY(eventually([&] { return !server.isServing() && !client.isServerPresent(); }));
        QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
        QVERIFY(eventually([&client] { return client.isServerPresent(); }));
        client.sendToServer("Call", nullptr, 0);
        QVERIFY(eventually([&] { return atServer.count() == round; }));
    }
}

void tst_NatsConnection::messageWithoutConnectionIsReported()
{
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached")));
    const ExpectedLog lost(*m_log, QStringLiteral("lost GenerateText: there is no connection"));
    NatsRuntime client(Role::ProxyClient, options());
    QVERIFY(isReady(client));
    QSignalSpy spy(&client, &MachineRuntime::sigMessageLost);
    m_broker->kill();
    QVERIFY(is(client, Connection::Disconnected));
    client.sendToServer("GenerateText", "why", 3);
    QCOMPARE(spy.count(), 0); // never inside the call
    QVERIFY(eventually([&spy] { return spy.count() == 1; }));
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("GenerateText"));
    QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("there is no connection"));
}

void tst_NatsConnection::messagesAreNotSentLater()
{
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached|lost Early")));
    Receiver atClient;
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime client(Role::ProxyClient, options());
    atClient.listen(client, "Early");
    atClient.listen(client, "Late");
    QVERIFY(isReady(server, true) && isReady(client));
    m_broker->kill();
    QVERIFY(is(server, Connection::Disconnected) && is(client, Connection::Disconnected));
    server.sendToClients("Early", nullptr, 0);
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
    QVERIFY(eventually([&] { return server.isServing() && client.isServerPresent(); }));
    server.sendToClients("Late", nullptr, 0);
    QVERIFY(eventually([&atClient] { return atClient.count() > 0; }));
    QCOMPARE(atClient.names(), QVector<QByteArray>{"Late"});
}

void tst_NatsConnection::brokersOwnLimitHolds()
{
    m_broker->kill();
    NatsServer::Options small;
    small.maxPayload = 1000;
    m_broker->setOptions(small);
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
    const ExpectedLog told(*m_log, QStringLiteral("lost Call: it has 1001 bytes, and at most 1000 can be sent"));
    Receiver atServer;
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime client(Role::ProxyClient, options());
    atServer.listen(server, "Call");
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    const QByteArray bytes(1001, 'x');
    client.sendToServer("Call", bytes.constData(), 1001);
    client.sendToServer("Call", bytes.constData(), 1000);
    QVERIFY(eventually([&atServer] { return atServer.count() > 0; }));
    QCOMPARE(atServer.payloads(), QVector<QByteArray>{bytes.left(1000)});
}

void tst_NatsConnection::nameThatIsNoPartOfASubjectIsRefused()
{
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime client(Role::ProxyClient, options());
    QVERIFY(isReady(server, true) && isReady(client));
    QSignalSpy spy(&client, &MachineRuntime::sigMessageLost);
    const ExpectedLog told(*m_log, QStringLiteral("its name has other characters"), 6);
    for (const char *name : {"", "a b", "a.b", "*", ">", "a\r\nPUB x 0"})
        client.sendToServer(name, nullptr, 0);
    QVERIFY(eventually([&spy] { return spy.count() == 6; }));
    QCOMPARE(client.connection(), Connection::Connected);
}

void tst_NatsConnection::silentBrokerDoesNotHoldTheProgram()
{
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    NatsOptions toSilent = options();
    toSilent.servers = QStringList{QStringLiteral("nats://127.0.0.1:%1").arg(silent.serverPort())};
    toSilent.connectTimeout = std::chrono::milliseconds(100);
    const ExpectedLog told(*m_log, QStringLiteral("cannot be reached"));
    NatsRuntime runtime(Role::ProxyServer, toSilent);
    QVERIFY(is(runtime, Connection::Disconnected));
}

// What fits into the buffers between is taken, then a send has to end by itself.
void tst_NatsConnection::stalledBrokerIsGivenUp()
{
    NatsOptions impatient = options();
    impatient.writeTimeout = std::chrono::milliseconds(200);
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached|lost Large")));
    NatsRuntime server(Role::ProxyServer, impatient);
    QVERIFY(isReady(server, true));
    QSignalSpy lost(&server, &MachineRuntime::sigMessageLost);
    QSignalSpy changed(&server, &MachineRuntime::sigConnectionChanged);
    m_broker->suspend();
    const QByteArray bytes(1024 * 1024, 'x');
    for (int i = 0; i < 200 && lost.isEmpty(); ++i) {
        server.sendToClients("Large", bytes.constData(), static_cast<unsigned int>(bytes.size()));
        settle();
    }
    QVERIFY(!lost.isEmpty());
    QVERIFY(eventually([&changed] { return !changed.isEmpty(); }));
    QCOMPARE(changed.at(0).at(0).value<Connection>(), Connection::Disconnected);
    m_broker->resume();
    QVERIFY(isReady(server, true));
}

void tst_NatsConnection::silenceOfTheBrokerIsNoticed()
{
    NatsOptions watchful = options();
    watchful.pingInterval = std::chrono::milliseconds(50);
    watchful.connectTimeout = std::chrono::milliseconds(500);
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached")));
    NatsRuntime client(Role::ProxyClient, watchful);
    QVERIFY(isReady(client));
    m_broker->suspend();
    QVERIFY(is(client, Connection::Disconnected));
    m_broker->resume();
    QVERIFY(is(client, Connection::Connected));
}

void tst_NatsConnection::groupsDoNotHearEachOther()
{
    NatsOptions other = options();
    other.group = QStringLiteral("news");
    Receiver atServer;
    Receiver atOther;
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime otherServer(Role::ProxyServer, other);
    NatsRuntime client(Role::ProxyClient, options());
    atServer.listen(server, "Call");
    atOther.listen(otherServer, "Call");
    atOther.listen(otherServer, "Own");
    QVERIFY(isReady(server, true) && isReady(otherServer, true));
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    client.sendToServer("Call", nullptr, 0);
    QVERIFY(eventually([&atServer] { return atServer.count() == 1; }));
    NatsRuntime otherClient(Role::ProxyClient, other);
    QVERIFY(eventually([&otherClient] { return otherClient.isServerPresent(); }));
    otherClient.sendToServer("Own", nullptr, 0);
    QVERIFY(eventually([&atOther] { return atOther.count() > 0; }));
    QCOMPARE(atOther.names(), QVector<QByteArray>{"Own"});
}

QTEST_GUILESS_MAIN(tst_NatsConnection)
#include "tst_natsconnection.moc"
