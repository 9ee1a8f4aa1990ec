// Credentials at the broker: whom it lets in, and that nobody reads them in a log.

#include "nats/natsruntime.h"
#include "support/logcatcher.h"
#include "support/natsserver.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;
using Connection = MachineRuntime::Connection;

class tst_NatsCredentials : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void wrongCredentialsAreRefusedUntilMended_data();
    void wrongCredentialsAreRefusedUntilMended();
    void credentialsOpenTheBroker_data();
    void credentialsOpenTheBroker();
    void textsAreTakenAsTheyAre();
    void forbiddenSubjectIsReported();
    void forbiddenPresenceIsToldOnce();
    void credentialsAreNeverShown();

private:
    bool restart(const NatsServer::Options &options);
    NatsOptions options() const;
    bool is(const NatsRuntime &runtime, Connection connection) const;

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<NatsServer> m_broker;
};

void tst_NatsCredentials::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_broker = std::make_unique<NatsServer>();
}

void tst_NatsCredentials::cleanup()
{
    m_broker.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

bool tst_NatsCredentials::restart(const NatsServer::Options &options)
{
    m_broker->kill();
    m_broker->setOptions(options);
    return m_broker->start();
}

NatsOptions tst_NatsCredentials::options() const
{
    NatsOptions options;
    options.servers = QStringList{m_broker->url()};
    options.longestRetry = options.firstRetry;
    return options;
}

bool tst_NatsCredentials::is(const NatsRuntime &runtime, Connection connection) const
{
    return eventually([&] { return runtime.connection() == connection; });
}

void tst_NatsCredentials::wrongCredentialsAreRefusedUntilMended_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("token");
    QTest::newRow("none") << QString() << QString() << QString();
    QTest::newRow("wrong password") << QStringLiteral("operator") << QStringLiteral("guess") << QString();
    QTest::newRow("wrong token") << QString() << QString() << QStringLiteral("guess");
}

void tst_NatsCredentials::wrongCredentialsAreRefusedUntilMended()
{
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, token);
    NatsServer::Options guarded;
    guarded.user = QStringLiteral("operator");
    guarded.password = QStringLiteral("secret");
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    NatsOptions wrong = options();
    wrong.user = user;
    wrong.password = password;
    wrong.token = token;
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("refuses this machine|cannot be reached")));
    NatsRuntime runtime(Role::ProxyServer, wrong);
    QVERIFY(is(runtime, Connection::Refused));
    QVERIFY(runtime.connectionText().contains(QLatin1String("wrong or missing credentials")));
    QVERIFY2(restart({}), qPrintable(m_broker->errorText()));
    QVERIFY(is(runtime, Connection::Connected));
}

void tst_NatsCredentials::credentialsOpenTheBroker_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("token");
    QTest::newRow("user and password") << QStringLiteral("operator") << QString();
    QTest::newRow("token") << QString() << QStringLiteral("secret");
}

void tst_NatsCredentials::credentialsOpenTheBroker()
{
    QFETCH(QString, user);
    QFETCH(QString, token);
    NatsServer::Options guarded;
    guarded.user = user;
    guarded.password = QStringLiteral("p@ss: w/ord");
    guarded.token = token;
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    NatsOptions right = options();
    right.user = user;
    right.password = user.isEmpty() ? QString() : guarded.password;
    right.token = token;
    NatsRuntime runtime(Role::ProxyServer, right);
    QVERIFY(isReady(runtime, true));
}

// The library would put them into its greeting as they are, quotes and all.
void tst_NatsCredentials::textsAreTakenAsTheyAre()
{
    const QString odd = QStringLiteral("a\"b\\c \u00fc\t\u4e2d");
    NatsServer::Options guarded;
    guarded.more = QStringLiteral("authorization { user: \"%1\", password: \"%1\" }\n")
                       .arg(QStringLiteral("a\\\"b\\\\c \u00fc\\t\u4e2d"));
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    NatsOptions right = options();
    right.user = right.password = right.machine = odd;
    NatsRuntime runtime(Role::ProxyServer, right);
    QVERIFY(isReady(runtime, true));
    guarded.more = QStringLiteral("authorization { token: \"t\\\"\" }\n");
    const ExpectedLog told(*m_log, QRegularExpression(QStringLiteral("was lost|cannot be reached|refuses")));
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    right = options();
    right.token = QStringLiteral("t\"");
    NatsRuntime byToken(Role::ProxyServer, right);
    QVERIFY(isReady(byToken, true));
}

void tst_NatsCredentials::forbiddenSubjectIsReported()
{
    NatsServer::Options guarded;
    guarded.more = QStringLiteral("authorization { users: [ { user: \"viewer\", password: \"x\", permissions: {"
                                  " publish: { deny: \"*.*.server.GenerateText\" } } } ] }\n");
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    NatsOptions viewer = options();
    viewer.user = QStringLiteral("viewer");
    viewer.password = QStringLiteral("x");
    const ExpectedLog told(
        *m_log, QRegularExpression(QStringLiteral("GenerateText"), QRegularExpression::CaseInsensitiveOption));
    NatsRuntime client(Role::ProxyClient, viewer);
    QVERIFY(isReady(client));
    QSignalSpy lost(&client, &MachineRuntime::sigMessageLost);
    client.sendToServer("GenerateText", nullptr, 0);
    QVERIFY(eventually([&lost] { return !lost.isEmpty(); }));
    QCOMPARE(lost.at(0).at(0).toString(), QStringLiteral("GenerateText"));
    QVERIFY(lost.at(0).at(1).toString().startsWith(QLatin1String("permission"), Qt::CaseInsensitive));
}

// Each announcement is refused, and the second says nothing new.
void tst_NatsCredentials::forbiddenPresenceIsToldOnce()
{
    NatsServer::Options guarded;
    guarded.more = QStringLiteral("authorization { users: [ { user: \"server\", password: \"x\", permissions: {"
                                  " publish: { deny: [\"*.*.presence\", \"*.*.clients.*\"] } } } ] }\n");
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    NatsOptions mute = options();
    mute.user = QStringLiteral("server");
    mute.password = QStringLiteral("x");
    mute.presenceInterval = std::chrono::milliseconds(100);
    const ExpectedLog told(*m_log,
                           QRegularExpression(QStringLiteral("permission"), QRegularExpression::CaseInsensitiveOption));
    NatsRuntime server(Role::ProxyServer, mute);
    QSignalSpy lost(&server, &MachineRuntime::sigMessageLost);
    QVERIFY(isReady(server, true));
    QVERIFY(eventually([&lost] { return !lost.isEmpty(); }));
    QCOMPARE(lost.at(0).at(0).toString(), QString());
    QElapsedTimer clock;
    clock.start();
    do {
        server.sendToClients("Tick", nullptr, 0);
        QVERIFY(eventually([&, before = lost.count()] { return lost.count() > before; }));
        QCOMPARE(lost.last().at(0).toString(), QStringLiteral("Tick"));
    } while (clock.elapsed() < 5 * mute.presenceInterval.count());
}

void tst_NatsCredentials::credentialsAreNeverShown()
{
    NatsServer::Options guarded;
    guarded.user = QStringLiteral("operator");
    guarded.password = QStringLiteral("topsecret");
    QVERIFY2(restart(guarded), qPrintable(m_broker->errorText()));
    const ExpectedLog told(*m_log,
                           QRegularExpression(QStringLiteral("refuses this machine|was lost|cannot be reached")));
    const auto inAddress = [this](const char *credentials) {
        NatsOptions options = this->options();
        options.servers = QStringList{options.servers.first().insert(7, QLatin1String(credentials) + QLatin1Char('@'))};
        return options;
    };
    NatsRuntime right(Role::ProxyServer, inAddress("operator:topsecret"));
    NatsRuntime wrong(Role::ProxyClient, inAddress("operator:guesswork"));
    QVERIFY(isReady(right, true));
    QVERIFY(is(wrong, Connection::Refused));
    QStringList shown{right.connectionText(), wrong.connectionText()};
    m_broker->kill();
    QVERIFY(is(right, Connection::Disconnected));
    shown += right.connectionText();
    shown += m_log->texts();
    for (const QString &text : shown) {
        for (const char *secret : {"operator", "topsecret", "guesswork"})
            QVERIFY2(!text.contains(QLatin1String(secret)), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(tst_NatsCredentials)
#include "tst_natscredentials.moc"
