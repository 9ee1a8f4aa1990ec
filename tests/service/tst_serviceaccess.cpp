#include "serviceclient.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

// 0 where the service lets the client in.
int codeWith(const ServiceProcess &service, const QByteArray &token)
{
    const QByteArray header = token.isNull() ? QByteArray() : "token: " + token + "\r\n";
    return codeOf(ServiceClient(service, header).post(paths::text, question("stop layer 1")));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

// Who may use the service.
class ServiceAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void makesATokenWhereOthersReachIt();
    void keepsTheTokenOverStarts();
    void warnsWhereAnyoneMayUseIt();
    void endsWhereTheTokenFileIsNoSecret();
    void takesATokenAsItIs_data();
    void takesATokenAsItIs();
    void answersNoForeignPage_data();
    void answersNoForeignPage();
    void answersUnderTheNamesItWasGiven();
};

void ServiceAccessTest::makesATokenWhereOthersReachIt()
{
    ServiceProcess service;
    QVERIFY(service.startEverywhere());
    const QByteArray token = contentOf(service.stateFile(QStringLiteral("token"))).trimmed();
    QCOMPARE(token.size(), 43);
    QCOMPARE(codeWith(service, {}), 401);
    QCOMPARE(codeWith(service, token), 0);
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
    const QByteArray log = service.standardError();
    QCOMPARE(log.count(token), 1);
    QVERIFY2(log.contains("kept in " + service.stateFile(QStringLiteral("token")).toUtf8()), log.constData());
    QVERIFY(!log.contains("no-token"));
}

void ServiceAccessTest::keepsTheTokenOverStarts()
{
    const QTemporaryDir folder;
    const QStringList options{QStringLiteral("--token-file"), folder.filePath(QStringLiteral("token"))};
    QByteArray token;
    for (int start = 0; start < 2; ++start) {
        ServiceProcess service;
        QVERIFY(service.start(options));
        const QByteArray kept = contentOf(options.last()).trimmed();
        QVERIFY(token.isEmpty() || token == kept);
        token = kept;
        QCOMPARE(codeWith(service, token), 0);
        QCOMPARE(codeWith(service, {}), 401);
        service.signal(SIGTERM);
        QCOMPARE(service.exitCode(), 0);
        QCOMPARE(service.standardError().count(token), start == 0 ? 1 : 0);
    }
}

void ServiceAccessTest::warnsWhereAnyoneMayUseIt()
{
    const auto logOf = [](const QStringList &options) {
        ServiceProcess service;
        const bool answers = service.startEverywhere(options) && codeWith(service, {}) != -1;
        service.signal(SIGTERM);
        return answers && service.exitCode() == 0 ? service.standardError() : QByteArray();
    };
    const QByteArray open = logOf({QStringLiteral("--no-token")});
    QVERIFY2(open.contains("level=warning event=no-token"), open.constData());
    QVERIFY2(open.contains("status=200 code=0"), open.constData());
    const QByteArray guarded = logOf({QStringLiteral("--token"), QStringLiteral("secret-word")});
    QVERIFY(guarded.contains("event=stopping"));
    QVERIFY(!guarded.contains("no-token"));
    QVERIFY(!guarded.contains("secret-word"));
}

void ServiceAccessTest::endsWhereTheTokenFileIsNoSecret()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("token")));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("secret-word");
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    ServiceProcess service;
    QCOMPARE(service.runToEnd({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                               QStringLiteral("--token-file"), file.fileName()}),
             1);
    const QByteArray message = service.standardError();
    QVERIFY2(message.contains("can be read by others") && message.contains("--no-token"), message.constData());
    QVERIFY(!message.contains("secret-word"));
}

void ServiceAccessTest::takesATokenAsItIs_data()
{
    QTest::addColumn<QString>("configured");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("percent") << QStringLiteral("a%41b") << QByteArray("a%41b");
    QTest::newRow("plus") << QStringLiteral("a+b/c=") << QByteArray("a+b/c=");
    QTest::newRow("outer blanks") << QStringLiteral("  secret ") << QByteArray("secret");
    QTest::newRow("outer blanks, sent too") << QStringLiteral("  secret ") << QByteArray("  secret ");
    QTest::newRow("inner blanks") << QStringLiteral("two words") << QByteArray("two words");
    QTest::newRow("signs") << QStringLiteral("!\"#$&'()*,-.:;<>?@[]^_`{|}~")
                           << QByteArray("!\"#$&'()*,-.:;<>?@[]^_`{|}~");
}

void ServiceAccessTest::takesATokenAsItIs()
{
    QFETCH(QString, configured);
    QFETCH(QByteArray, sent);
    ServiceProcess service;
    service.setEnvironment(QStringLiteral("ASSISTANTSERVICE_TOKEN"), configured);
    QVERIFY(service.start());
    QCOMPARE(codeWith(service, sent), 0);
    QCOMPARE(codeWith(service, "other"), 401);
    QCOMPARE(codeWith(service, QByteArray(sent).replace("%41", "A") + "A"), 401);
}

void ServiceAccessTest::answersNoForeignPage_data()
{
    QTest::addColumn<QByteArray>("was");
    QTest::addColumn<QByteArray>("is");
    QTest::addColumn<int>("code");
    QTest::newRow("another name") << QByteArray("Host: 127.0.0.1") << QByteArray("Host: evil.example") << 421;
    QTest::newRow("origin") << QByteArray("\r\nContent-Length")
                            << QByteArray("\r\nOrigin: http://evil.example\r\nContent-Length") << 403;
    QTest::newRow("no origin") << QByteArray("\r\nContent-Length") << QByteArray("\r\nOrigin: null\r\nContent-Length")
                               << 403;
    QTest::newRow("from another site") << QByteArray("\r\nContent-Length")
                                       << QByteArray("\r\nSec-Fetch-Site: cross-site\r\nContent-Length") << 403;
    QTest::newRow("text") << QByteArray("application/json") << QByteArray("text/plain") << 415;
    QTest::newRow("no type") << QByteArray("Content-Type: application/json\r\n") << QByteArray() << 415;
}

void ServiceAccessTest::answersNoForeignPage()
{
    QFETCH(QByteArray, was);
    QFETCH(QByteArray, is);
    ServiceProcess service;
    QVERIFY(service.start());
    RawClient raw(service.port());
    raw.send(postBytes(paths::text, question("stop layer 1")).replace(was, is));
    const QByteArray reply = raw.readReply();
    QTEST(codeOf(jsonOf(reply)), "code");
    QVERIFY2(!messageOf(jsonOf(reply)).isEmpty(), reply.constData());
    QVERIFY2(!reply.toLower().contains("access-control"), reply.constData());
    RawClient preflight(service.port());
    preflight.send("OPTIONS " + paths::text + " HTTP/1.1\r\nHost: 127.0.0.1\r\nOrigin: http://evil.example\r\n\r\n");
    QVERIFY(!preflight.readReply().toLower().contains("access-control"));
}

void ServiceAccessTest::answersUnderTheNamesItWasGiven()
{
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--allow-host"), QStringLiteral("one.example"),
                           QStringLiteral("--allow-host"), QStringLiteral("two.example:8443"),
                           QStringLiteral("--public-url"), QStringLiteral("https://three.example/ai")}));
    const auto statusAs = [&service](const QByteArray &host) {
        RawClient raw(service.port());
        raw.send(getBytes("/healthz").replace("Host: 127.0.0.1", "Host: " + host));
        return statusOf(raw.readReply());
    };
    QCOMPARE(statusAs("one.example:80"), 200);
    QCOMPARE(statusAs("two.example:8443"), 200);
    QCOMPARE(statusAs("two.example"), 421);
    QCOMPARE(statusAs("three.example"), 200);
    QCOMPARE(statusAs("four.example"), 421);
}

QTEST_GUILESS_MAIN(ServiceAccessTest)
#include "tst_serviceaccess.moc"
