#include "consolehost/consoleprocess.h"

#include <QRegularExpression>
#include <QTest>

using namespace tavro::testsupport;

class ConsoleHostOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void explainsItself_data();
    void explainsItself();
    void refusesWrongUsage_data();
    void refusesWrongUsage();

private:
    static QStringList words(const QString &line) { return line.split(QLatin1Char(' '), Qt::SkipEmptyParts); }
};

void ConsoleHostOptionsTest::explainsItself_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("--help") << QStringLiteral("--help") << QStringLiteral("--picture <TEXT>.*--tick <SECONDS>");
    QTest::newRow("-h") << QStringLiteral("-h") << QStringLiteral("/stop.*--service <URL>");
    QTest::newRow("--version") << QStringLiteral("--version") << QStringLiteral("^consolehost \\d+\\.\\d+\\.\\d+\n$");
}

void ConsoleHostOptionsTest::explainsItself()
{
    QFETCH(QString, option);
    QFETCH(QString, pattern);
    ConsoleProcess host;
    host.start({option});
    QCOMPARE(host.status(), 0);
    QCOMPARE(host.err(), QString());
    QVERIFY2(QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption).match(host.out()).hasMatch(),
             qPrintable(host.out()));
}

void ConsoleHostOptionsTest::refusesWrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");

    const QString good = QStringLiteral("--service=http://127.0.0.1:1 --ask=x ");
    const auto row = [](const char *name, const QString &line, const char *message) {
        QTest::newRow(name) << words(line) << QString::fromLatin1(message);
    };
    row("no service", QStringLiteral("--ask=x"), "--service is missing");
    row("empty service", QStringLiteral("--ask=x --service="), "--service is missing");
    row("no scheme", QStringLiteral("--ask=x --service=127.0.0.1:80"), "--service is not an address");
    row("host name without scheme", QStringLiteral("--ask=x --service=localhost:80"), "--service is not an address");
    row("other scheme", QStringLiteral("--ask=x --service=file:///tmp"), "--service is not an address");
    row("no host", QStringLiteral("--ask=x --service=http://"), "--service is not an address");
    row("wrong port", QStringLiteral("--ask=x --service=http://a:99999"), "--service is not an address");
    row("query", QStringLiteral("--ask=x --service=http://a/?b=c"), "--service is not an address");
    row("time-out of words", good + QStringLiteral("--timeout=soon"), "--timeout takes a whole number");
    row("time-out of 0", good + QStringLiteral("--timeout=0"), "--timeout takes a whole number");
    row("negative time-out", good + QStringLiteral("--timeout=-5"), "--timeout takes a whole number");
    row("too large a time-out", good + QStringLiteral("--timeout=2000001"), "from 1 to 2000000");
    row("half a tick", good + QStringLiteral("--tick=0.5"), "--tick takes a whole number");
    row("tick of 0", good + QStringLiteral("--tick=0"), "--tick takes a whole number");
    row("unknown ratio", good + QStringLiteral("--ratio=1:1"), "--ratio is none of 16:9, 16:10, 5:4, 4:3: 1:1");
    row("missing media folder", good + QStringLiteral("--media=/no/such/folder"), "--media is not a folder");
    row("empty media folder name", good + QStringLiteral("--media="), "--media is not a folder");
    row("media file", good + QStringLiteral("--media=/etc/passwd"), "--media is not a folder");
    row("empty question", good + QStringLiteral("--ask="), "--ask: the question is empty");
    row("empty description", good + QStringLiteral("--picture="), "--picture: the description of the picture is empty");
    row("unknown option", good + QStringLiteral("--sing"), "sing");
    row("option without its value", good + QStringLiteral("--token"), "token");
    row("stray word", good + QStringLiteral("hello"), "not understood: hello");
    QTest::newRow("line break in the token") << words(good) + QStringList{QStringLiteral("--token=a\nb")}
                                             << QStringLiteral("--token has a line break in it");
}

void ConsoleHostOptionsTest::refusesWrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    ConsoleProcess host;
    host.start(arguments);
    QCOMPARE(host.status(), 2);
    QCOMPARE(host.out(), QString());
    QVERIFY2(host.err().startsWith(QStringLiteral("consolehost: ")), qPrintable(host.err()));
    QVERIFY2(host.err().contains(message), qPrintable(host.err()));
}

QTEST_GUILESS_MAIN(ConsoleHostOptionsTest)
#include "tst_consolehostoptions.moc"
