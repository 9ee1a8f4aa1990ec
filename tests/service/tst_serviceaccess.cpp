#include "serviceclient.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

const QStringList everywhere{QStringLiteral("--listen"), QStringLiteral("0.0.0.0:0")};

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
    QCOMPARE(service.runToEnd(everywhere + QStringList{QStringLiteral("--token-file"), file.fileName()}), 1);
    const QByteArray message = service.standardError();
    QVERIFY2(message.contains("can be read by others") && message.contains("--no-token"), message.constData());
    QVERIFY(!message.contains("secret-word"));
}

void ServiceAccessTest::takesATokenAsItIs_data()
{
    QTest::addColumn<QString>("configured");
    QTest::addColumn<QByteArray>("sent");
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

QTEST_GUILESS_MAIN(ServiceAccessTest)
#include "tst_serviceaccess.moc"
