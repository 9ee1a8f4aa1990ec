// Brokers that stall after their greeting, which the NATS library would wait for without end.

#include "greeter.h"
#include "nats/connectguard.h"
#include "nats/natsruntime.h"
#include "support/logcatcher.h"
#include "support/waiting.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;
using Connection = MachineRuntime::Connection;
using Then = Greeter::Then;
Q_DECLARE_METATYPE(Then)

class tst_ConnectGuard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log = std::make_unique<LogCatcher>(); }
    void cleanup();

    void stallingBrokerIsGivenUp_data() { addStalls(); }
    void stallingBrokerIsGivenUp();
    void stallingBrokerDoesNotHoldTheProgram_data() { addStalls(); }
    void stallingBrokerDoesNotHoldTheProgram();
    void onlyTheSilentAttemptIsEnded();
    void waitsGrowWhereTheBrokerEndsEachConnection();

private:
    static void addStalls();
    static NatsOptions optionsFor(const Greeter &broker, std::chrono::milliseconds connectTimeout);

    std::unique_ptr<LogCatcher> m_log;
};

void tst_ConnectGuard::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

void tst_ConnectGuard::addStalls()
{
    QTest::addColumn<Then>("then");
    QTest::newRow("after the greeting") << Then::Stall;
    QTest::newRow("in the TLS handshake") << Then::StallBeforeTls;
}

NatsOptions tst_ConnectGuard::optionsFor(const Greeter &broker, std::chrono::milliseconds connectTimeout)
{
    NatsOptions options;
    options.servers = QStringList{broker.url()};
    options.connectTimeout = connectTimeout;
    return options;
}

void tst_ConnectGuard::stallingBrokerIsGivenUp()
{
    QFETCH(Then, then);
    Greeter broker(then);
    const ExpectedLog told(*m_log, QStringLiteral("cannot be reached"));
    NatsOptions options = optionsFor(broker, std::chrono::milliseconds(300));
    options.longestRetry = options.firstRetry;
    const NatsRuntime runtime(Role::ProxyClient, options);
    QVERIFY(eventually([&] { return broker.greeted() == 3; }));
    QCOMPARE(runtime.connection(), Connection::Disconnected);
    QCOMPARE(runtime.connectionText(), broker.url() + QStringLiteral(" cannot be reached: it does not answer"));
}

// With a limit beyond that of the test.
void tst_ConnectGuard::stallingBrokerDoesNotHoldTheProgram()
{
    QFETCH(Then, then);
    Greeter broker(then);
    auto runtime = std::make_unique<NatsRuntime>(Role::ProxyServer, optionsFor(broker, std::chrono::hours(1)));
    QVERIFY(eventually([&broker] { return broker.isAnswered(); }));
    runtime.reset();
}

void tst_ConnectGuard::onlyTheSilentAttemptIsEnded()
{
    Greeter broker(Then::Stall);
    Greeter another(Then::Stall);
    const auto isOpen = [](const QTcpSocket &socket) { return socket.state() == QAbstractSocket::ConnectedState; };
    QTcpSocket earlier;
    earlier.connectToHost(QHostAddress::LocalHost, broker.port());
    QVERIFY(eventually([&] { return isOpen(earlier) && broker.greeted() == 1; }));
    const std::atomic_bool isHurried{false};
    const BrokerAddress address(broker.url());
    ConnectGuard guard(address, std::chrono::milliseconds(200), isHurried);
    QTcpSocket elsewhere;
    elsewhere.connectToHost(QHostAddress::LocalHost, another.port());
    QVERIFY(eventually([&] { return isOpen(elsewhere); }));
    QTcpSocket attempt;
    const QSignalSpy ended(&attempt, &QTcpSocket::disconnected);
    attempt.connectToHost(QHostAddress::LocalHost, broker.port());
    QVERIFY(eventually([&] { return !ended.isEmpty(); }));
    QVERIFY(guard.hasStruck());
    QVERIFY(isOpen(earlier) && isOpen(elsewhere));
}

// A slow machine takes longer still.
void tst_ConnectGuard::waitsGrowWhereTheBrokerEndsEachConnection()
{
    Greeter broker(Then::EndWhenAsked);
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached")));
    NatsOptions options = optionsFor(broker, std::chrono::seconds(10));
    options.firstRetry = std::chrono::milliseconds(10);
    QElapsedTimer clock;
    clock.start();
    const NatsRuntime runtime(Role::ProxyClient, options);
    QVERIFY(eventually([&broker] { return broker.greeted() == 8; }));
    QVERIFY2(clock.elapsed() >= 8 * (10 + 20 + 40 + 80 + 160 + 320 + 640) / 10, "the waits did not double");
}

QTEST_GUILESS_MAIN(tst_ConnectGuard)
#include "tst_connectguard.moc"
