#include "options.h"
#include "secrets.h"

#include <QtTest>

using namespace tavro::assistantservice;

namespace {

OptionsResult read(const QStringList &arguments, const QByteArray &environmentToken = {})
{
    return readOptions(QStringList{QStringLiteral("assistantservice")} + arguments,
                       {environmentToken, {}, "playout-3", {}});
}

} // namespace

class ServiceOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasWorkingDefaults();
    void readsEveryOption();
    void knowsTheNamesOfTheService();
    void refuses_data();
    void refuses();
    void printsHelpAndVersion();
    void listenAddresses_data();
    void listenAddresses();
    void comparesSecrets();
};

void ServiceOptionsTest::hasWorkingDefaults()
{
    const OptionsResult result = read({});
    QVERIFY2(result.run, qPrintable(result.text));
    QCOMPARE(result.options.listen.host, QStringLiteral("127.0.0.1"));
    QCOMPARE(result.options.listen.port, 8080);
    QCOMPARE(result.options.assistant.bodyLimits.largestPicture, QSize(7680, 4320));
    QVERIFY(result.options.assistant.token.isEmpty());
    QVERIFY(result.options.http.keepAlive > std::chrono::seconds(5));
}

void ServiceOptionsTest::readsEveryOption()
{
    const OptionsResult result = read(
        QStringLiteral("--listen [::1]:0 --token t --work-ms 5 --public-url https://a.example/x/ --workers 3 --queue 4 "
                       "--max-body 6 --max-picture 640x480 --keep-seconds 7 --picture-memory 8 --client-seconds 9 "
                       "--engine builtin --log-level error")
            .split(QLatin1Char(' ')));
    QVERIFY2(result.run, qPrintable(result.text));
    const Options &options = result.options;
    QCOMPARE(options.listen.host, QStringLiteral("::1"));
    QCOMPARE(options.assistant.token, QByteArray("t"));
    QCOMPARE(options.assistant.storeLimits.work.count(), 5);
    QCOMPARE(options.assistant.publicUrl, QStringLiteral("https://a.example/x"));
    QCOMPARE(options.assistant.workers, 3);
    QCOMPARE(options.assistant.storeLimits.unfinished, 4);
    QCOMPARE(options.http.largestBody, qint64(6 * 1024 * 1024));
    QCOMPARE(options.assistant.bodyLimits.largestPicture, QSize(640, 480));
    QCOMPARE(options.assistant.storeLimits.keep.count(), 7);
    QCOMPARE(options.assistant.storeLimits.pictureBytes, qint64(8 * 1024 * 1024));
    QCOMPARE(options.http.clientLimit.count(), 9000);
    QCOMPARE(options.logLevel, QStringLiteral("error"));
}

void ServiceOptionsTest::knowsTheNamesOfTheService()
{
    const ServiceNames names = read(QStringLiteral("--listen [::1]:0 --allow-host a.example --allow-host B.Example:81 "
                                                   "--allow-host my_host --allow-host bücher.example "
                                                   "--public-url https://c.example:82/ai")
                                        .split(QLatin1Char(' ')))
                                   .options.names;
    QCOMPARE(names.listenHost, QByteArray("::1"));
    QCOMPARE(names.machine, QByteArray("playout-3"));
    QByteArrayList others;
    for (const Authority &other : names.others) {
        others.append(other.host + ':' + QByteArray::number(other.port));
    }
    QCOMPARE(others,
             (QByteArrayList{"a.example:0", "b.example:81", "my_host:0", "xn--bcher-kva.example:0", "c.example:0"}));
}

void ServiceOptionsTest::refuses_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *arguments, const char *message) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments) << QString::fromLatin1(message);
    };
    row("--nonsense", "nonsense");
    row("extra", "Unexpected: extra");
    row("--listen 127.0.0.1", "--listen must be");
    row("--listen 127.0.0.1:70000", "--listen must be");
    row("--listen ::1:80", "--listen must be");
    row("--engine other", "--engine must be builtin or openai");
    row("--work-ms soon", "--work-ms must be a whole number");
    row("--work-ms -1", "--work-ms must be");
    row("--workers 0", "--workers must be");
    row("--queue 0", "--queue must be");
    row("--max-body 0", "--max-body must be");
    row("--max-picture 640", "--max-picture must be");
    row("--max-picture 8x8", "--max-picture must be");
    row("--max-picture 99999x99999", "--max-picture must be");
    row("--keep-seconds 0", "--keep-seconds must be");
    row("--public-url ftp://x", "--public-url must be");
    row("--public-url assistant", "--public-url must be");
    row("--allow-host http://x", "--allow-host must be");
    row("--allow-host a/b", "--allow-host must be");
    row("--allow-host [::1]:80", "--allow-host must be");
    row("--log-level loud", "--log-level must be");
}

void ServiceOptionsTest::refuses()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    const OptionsResult result = read(arguments.split(QLatin1Char(' ')));
    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.text.contains(message), qPrintable(result.text));
    QVERIFY(result.text.endsWith(QLatin1Char('\n')));
}

void ServiceOptionsTest::printsHelpAndVersion()
{
    const OptionsResult help = read({QStringLiteral("--help")});
    QVERIFY(!help.run);
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.text.contains(QStringLiteral("--max-picture")));
    QVERIFY(!read({QStringLiteral("--help-all")}).run);
    const OptionsResult version = read({QStringLiteral("--version")});
    QCOMPARE(version.exitCode, 0);
    QVERIFY(version.text.startsWith(QStringLiteral("assistantservice ")));
}

void ServiceOptionsTest::listenAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("url");
    QTest::newRow("IPv4") << QStringLiteral("10.0.0.1:80") << QStringLiteral("http://10.0.0.1:80");
    QTest::newRow("IPv6") << QStringLiteral("[fe80::1]:8080") << QStringLiteral("http://[fe80::1]:8080");
    QTest::newRow("name") << QStringLiteral("my-host.example:0") << QStringLiteral("http://my-host.example:0");
    QTest::newRow("no port") << QStringLiteral("host") << QString();
    QTest::newRow("no host") << QStringLiteral(":80") << QString();
    QTest::newRow("injection") << QStringLiteral("a b:80") << QString();
}

void ServiceOptionsTest::listenAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, url);
    const std::optional<ListenAddress> address = parseListenAddress(text);
    QCOMPARE(address.has_value(), !url.isEmpty());
    if (address) {
        QCOMPARE(httpUrl(address->host, address->port), url);
    }
}

void ServiceOptionsTest::comparesSecrets()
{
    QVERIFY(equalSecrets("abc", "abc"));
    QVERIFY(!equalSecrets("abd", "abc"));
    QVERIFY(!equalSecrets("ab", "abc"));
    QVERIFY(!equalSecrets("", "abc"));
}

QTEST_GUILESS_MAIN(ServiceOptionsTest)
#include "tst_serviceoptions.moc"
