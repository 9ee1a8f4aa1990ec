// Encrypted connections to the broker, and whom a machine trusts.

#include "certificates.h"
#include "greeter.h"
#include "nats/natsruntime.h"
#include "support/logcatcher.h"
#include "support/natsserver.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;
using Connection = MachineRuntime::Connection;

class tst_NatsTls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void trustedBrokerIsUsed_data();
    void trustedBrokerIsUsed();
    void brokerIsRefused_data();
    void brokerIsRefused();
    void brokerWithoutTlsIsRefusedWhereTlsIsAsked_data();
    void brokerWithoutTlsIsRefusedWhereTlsIsAsked();
    void brokerThatEndsInTheHandshakeIsNoStranger();
    void wrongFileCanBeMended();
    void brokerMayGoWhileMachinesSend();

private:
    NatsOptions options() const;

    Certificates m_certificates;
    Certificates m_strangers;
    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<NatsServer> m_broker;
};

void tst_NatsTls::initTestCase()
{
    QVERIFY(m_certificates.make());
    QVERIFY(m_strangers.make());
}

void tst_NatsTls::init()
{
    m_log = std::make_unique<LogCatcher>();
    NatsServer::Options options;
    options.certificateFile = m_certificates.certificate();
    options.keyFile = m_certificates.key();
    m_broker = std::make_unique<NatsServer>(options);
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
}

void tst_NatsTls::cleanup()
{
    m_broker.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

NatsOptions tst_NatsTls::options() const
{
    NatsOptions options;
    options.servers = QStringList{m_broker->url()};
    options.longestRetry = options.firstRetry;
    options.caFile = m_certificates.authority();
    return options;
}

void tst_NatsTls::trustedBrokerIsUsed_data()
{
    QTest::addColumn<bool>("tls");
    QTest::addColumn<QString>("scheme");
    QTest::newRow("asked for") << true << QStringLiteral("nats");
    QTest::newRow("asked for by the address") << false << QStringLiteral("tls");
    QTest::newRow("the broker insists") << false << QStringLiteral("nats");
}

void tst_NatsTls::trustedBrokerIsUsed()
{
    QFETCH(bool, tls);
    QFETCH(QString, scheme);
    NatsOptions trusting = options();
    trusting.tls = tls;
    trusting.servers[0].replace(QLatin1String("nats"), scheme);
    Receiver atServer;
    NatsRuntime server(Role::ProxyServer, trusting);
    NatsRuntime client(Role::ProxyClient, trusting);
    atServer.listen(server, "Call");
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    client.sendToServer("Call", "x", 1);
    QVERIFY(eventually([&atServer] { return atServer.count() == 1; }));
}

void tst_NatsTls::brokerIsRefused_data()
{
    QTest::addColumn<QString>("caFile");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("text");
    const QString address = QStringLiteral("127.0.0.1");
    // The same address, but the certificate does not say it so; no list of names is needed to find it.
    const QString otherName = QStringLiteral("127.1");
    const QString untrusted = QStringLiteral("is not trusted");
    QTest::newRow("another authority") << m_strangers.authority() << address << untrusted;
    QTest::newRow("the system's authorities") << QString() << address << untrusted;
    QTest::newRow("another name") << m_certificates.authority() << otherName << untrusted;
    QTest::newRow("no such file") << QStringLiteral("/nowhere/ca.pem") << address
                                  << QStringLiteral("file cannot be used: /nowhere/ca.pem");
    QTest::newRow("not a certificate") << m_certificates.key() << address << QStringLiteral("file cannot be used");
}

void tst_NatsTls::brokerIsRefused()
{
    QFETCH(QString, caFile);
    QFETCH(QString, host);
    QFETCH(QString, text);
    NatsOptions doubting = options();
    doubting.caFile = caFile;
    doubting.servers[0].replace(QLatin1String("127.0.0.1"), host);
    const ExpectedLog told(*m_log, text);
    NatsRuntime runtime(Role::ProxyServer, doubting);
    QVERIFY(eventually([&runtime] { return runtime.connection() == Connection::Refused; }));
    QVERIFY2(runtime.connectionText().contains(text), qPrintable(runtime.connectionText()));
}

void tst_NatsTls::brokerWithoutTlsIsRefusedWhereTlsIsAsked_data()
{
    QTest::addColumn<bool>("tls");
    QTest::addColumn<QString>("scheme");
    QTest::newRow("option") << true << QStringLiteral("nats");
    QTest::newRow("address") << false << QStringLiteral("tls");
}

void tst_NatsTls::brokerWithoutTlsIsRefusedWhereTlsIsAsked()
{
    QFETCH(bool, tls);
    QFETCH(QString, scheme);
    NatsServer plain;
    QVERIFY2(plain.start(), qPrintable(plain.errorText()));
    NatsOptions insisting = options();
    insisting.servers = QStringList{plain.url().replace(QLatin1String("nats"), scheme)};
    insisting.tls = tls;
    const ExpectedLog told(*m_log, QStringLiteral("offers no TLS"));
    NatsRuntime runtime(Role::ProxyServer, insisting);
    QVERIFY(eventually([&runtime] { return runtime.connection() == Connection::Refused; }));
    QVERIFY(runtime.connectionText().contains(QLatin1String("offers no TLS")));
}

// Nobody's certificate is to blame.
void tst_NatsTls::brokerThatEndsInTheHandshakeIsNoStranger()
{
    const Greeter broker(Greeter::Then::EndInTls);
    NatsOptions unlucky = options();
    unlucky.servers = QStringList{broker.url()};
    const ExpectedLog told(*m_log, QStringLiteral("cannot be reached: it ended the connection at once"));
    const NatsRuntime runtime(Role::ProxyServer, unlucky);
    QVERIFY(eventually([&] { return broker.greeted() == 2; }));
    QCOMPARE(runtime.connection(), Connection::Disconnected);
}

void tst_NatsTls::wrongFileCanBeMended()
{
    QTemporaryDir folder;
    NatsOptions early = options();
    early.caFile = folder.filePath(QStringLiteral("ca.pem"));
    const ExpectedLog told(*m_log, QStringLiteral("file cannot be used"));
    NatsRuntime runtime(Role::ProxyServer, early);
    QVERIFY(eventually([&runtime] { return runtime.connection() == Connection::Refused; }));
    QVERIFY(QFile::copy(m_certificates.authority(), early.caFile));
    QVERIFY(isReady(runtime, true));
}

// Writing to an encrypted connection that is gone must not end the process.
void tst_NatsTls::brokerMayGoWhileMachinesSend()
{
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached|lost Tick")));
    NatsRuntime server(Role::ProxyServer, options());
    QVERIFY(isReady(server, true));
    QSignalSpy lost(&server, &MachineRuntime::sigMessageLost);
    m_broker->kill();
    QVERIFY(eventually([&] {
        server.sendToClients("Tick", "x", 1);
        return !lost.isEmpty();
    }));
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
    QVERIFY(isReady(server, true));
}

QTEST_GUILESS_MAIN(tst_NatsTls)
#include "tst_natstls.moc"
