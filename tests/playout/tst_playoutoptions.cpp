#include "optionreader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;

class PlayoutOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void presets();
    void readsTheCommandLine();
    void readsTheFile();
    void commandLineHoldsOverEnvironmentOverFile();
    void pathsInTheFileCountFromIt();
    void theStandardFileIsReadWhereItIs();
    void refuses_data();
    void refuses();
    void refusesTheFile_data();
    void refusesTheFile();
    void tellsWhoGaveAValue();
    void version();

private:
    std::optional<Options> read(const QStringList &arguments, const QString &token = {});
    void write(const QByteArray &text);

    QTemporaryDir folder;
    QString config;
    QString text;
    bool wrong = false;
};

void PlayoutOptionsTest::init()
{
    QVERIFY(folder.isValid());
    config = folder.filePath(QStringLiteral("playout.ini"));
    QFile::remove(config);
    QFile script(folder.filePath(QStringLiteral("demo.play")));
    QVERIFY(script.open(QFile::WriteOnly));
}

std::optional<Options> PlayoutOptionsTest::read(const QStringList &arguments, const QString &token)
{
    const auto environment = [&](const QString &name) {
        const bool isGiven = name == QLatin1String("ASSISTANT_TOKEN") && !token.isEmpty();
        return isGiven ? std::optional(token) : std::nullopt;
    };
    OptionReader reader(environment, config);
    const auto options = reader.read(QStringList(QStringLiteral("playout")) + arguments);
    text = reader.text();
    wrong = reader.isWrong();
    return options;
}

void PlayoutOptionsTest::write(const QByteArray &content)
{
    QFile file(config);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(content);
}

void PlayoutOptionsTest::presets()
{
    const auto options = read({});
    QVERIFY2(options, qPrintable(text));
    QCOMPARE(options->service, QStringLiteral("http://127.0.0.1:8080"));
    QCOMPARE(options->language, QStringLiteral("en"));
    QVERIFY(options->role == Role::All);
    QCOMPARE(options->themeFile, QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"));
    QCOMPARE(options->scriptFile, QString());
    QCOMPARE(options->timeout.count(), 60);
    QCOMPARE(options->tick.count(), 1);
}

void PlayoutOptionsTest::readsTheCommandLine()
{
    const QString script = folder.filePath(QStringLiteral("demo.play"));
    const auto options =
        read({QStringLiteral("--service=https://ai.example/base/"), QStringLiteral("--token=t"),
              QStringLiteral("--user-id=u"), QStringLiteral("--node=n"), QStringLiteral("--timeout=9"),
              QStringLiteral("--tick=2"), QStringLiteral("--media"), folder.path(), QStringLiteral("--language=rus"),
              QStringLiteral("--role=local"), QStringLiteral("--script"), script});
    QVERIFY2(options, qPrintable(text));
    QCOMPARE(options->service, QStringLiteral("https://ai.example/base"));
    QCOMPARE(options->token, QStringLiteral("t"));
    QCOMPARE(options->userId, QStringLiteral("u"));
    QCOMPARE(options->node, QStringLiteral("n"));
    QCOMPARE(options->timeout.count(), 9);
    QCOMPARE(options->tick.count(), 2);
    QCOMPARE(options->mediaFolder, folder.path());
    QCOMPARE(options->language, QStringLiteral("rus"));
    QVERIFY(options->role == Role::Local);
    QCOMPARE(options->scriptFile, script);
}

void PlayoutOptionsTest::readsTheFile()
{
    write("service=http://host:1\nnode=\"студия, 1\"\ntimeout=7\nlanguage=zh_CN\n");
    const auto options = read({});
    QVERIFY2(options, qPrintable(text));
    QCOMPARE(options->service, QStringLiteral("http://host:1"));
    QCOMPARE(options->node, QStringLiteral("студия, 1"));
    QCOMPARE(options->timeout.count(), 7);
    QCOMPARE(options->language, QStringLiteral("zh_CN"));
}

void PlayoutOptionsTest::commandLineHoldsOverEnvironmentOverFile()
{
    write("token=file\n");
    QCOMPARE(read({})->token, QStringLiteral("file"));
    QCOMPARE(read({}, QStringLiteral("environment"))->token, QStringLiteral("environment"));
    QCOMPARE(read({QStringLiteral("--token=line")}, QStringLiteral("environment"))->token, QStringLiteral("line"));
}

void PlayoutOptionsTest::pathsInTheFileCountFromIt()
{
    write("media=.\n");
    QCOMPARE(QFileInfo(read({})->mediaFolder).canonicalFilePath(), QFileInfo(folder.path()).canonicalFilePath());
}

void PlayoutOptionsTest::theStandardFileIsReadWhereItIs()
{
    write("node=standard\n");
    QFile other(folder.filePath(QStringLiteral("other.ini")));
    QVERIFY(other.open(QFile::WriteOnly));
    other.write("node=other\n");
    other.close();
    QCOMPARE(read({})->node, QStringLiteral("standard"));
    QCOMPARE(read({QStringLiteral("--config"), other.fileName()})->node, QStringLiteral("other"));
}

void PlayoutOptionsTest::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *name, const char *argument, const char *why) {
        QTest::newRow(name) << QStringList(QString::fromUtf8(argument)) << QString::fromUtf8(why);
    };
    row("unknown option", "--colour=red", "Unknown option 'colour'.");
    row("stray word", "hello", "not understood: hello");
    row("service without a scheme", "--service=127.0.0.1:8080",
        "service is not an address like http://127.0.0.1:8080: 127.0.0.1:8080");
    row("service with a query", "--service=http://a/?b",
        "service is not an address like http://127.0.0.1:8080: http://a/?b");
    row("token with a line break", "--token=a\nb", "token has a line break in it");
    row("no time", "--timeout=0", "timeout takes a whole number of seconds from 1 to 2000000: 0");
    row("tick of words", "--tick=often", "tick takes a whole number of seconds from 1 to 2000000: often");
    row("no such folder", "--media=/nowhere", "media is not a folder that can be read: /nowhere");
    row("no such theme", "--theme=/nowhere", "theme is not a file that can be read: /nowhere");
    row("no such script", "--script=/nowhere", "script is not a file that can be read: /nowhere");
    row("no such config", "--config=/nowhere", "/nowhere cannot be read");
    row("no such role", "--role=boss", "role is none of all, local, server and client: boss");
}

void PlayoutOptionsTest::refuses()
{
    QFETCH(QStringList, arguments);
    QVERIFY(!read(arguments));
    QVERIFY(wrong);
    QTEST(text, "why");
}

void PlayoutOptionsTest::refusesTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("why");
    QTest::newRow("unknown name") << QByteArray("colour=red\n") << QStringLiteral("has the unknown name colour");
    QTest::newRow("script") << QByteArray("script=a\n") << QStringLiteral("has the unknown name script");
    QTest::newRow("comma") << QByteArray("node=a, b\n")
                           << QStringLiteral("needs quotation marks around the value of node");
    QTest::newRow("comma behind an at sign")
        << QByteArray("node=@a, b\n") << QStringLiteral("needs quotation marks around the value of node");
    QTest::newRow("Qt's own kinds") << QByteArray("node=@Size(1 2)\n")
                                    << QStringLiteral("has no text as the value of node");
    QTest::newRow("too large") << "node=a\n;" + QByteArray(64 * 1024, 'x') << QStringLiteral("is larger than 64 KiB");
    QTest::newRow("no value") << QByteArray("node\n")
                              << QStringLiteral("has a line that is not of the form name=value");
}

void PlayoutOptionsTest::refusesTheFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, why);
    write(content);
    QVERIFY(!read({}));
    QCOMPARE(text, config + QLatin1Char(' ') + why);
}

void PlayoutOptionsTest::tellsWhoGaveAValue()
{
    write("service=http://host:1\nnode=file\n");
    const auto options = read({QStringLiteral("--node=line"), QStringLiteral("--tick"), QStringLiteral("3")},
                              QStringLiteral("from the environment"));
    QVERIFY2(options, qPrintable(text));
    QCOMPARE(options->settingsFile, config);
    QCOMPARE(options->givenBy,
             (QHash<QString, QString>{
                 {QStringLiteral("node"), QStringLiteral("--node on the command line")},
                 {QStringLiteral("tick"), QStringLiteral("--tick on the command line")},
                 {QStringLiteral("token"), QStringLiteral("ASSISTANT_TOKEN in the environment")},
             }));
}

void PlayoutOptionsTest::version()
{
    QCoreApplication::setApplicationName(QStringLiteral("playout"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    QVERIFY(!read({QStringLiteral("--version")}));
    QVERIFY(!wrong);
    QCOMPARE(text, QStringLiteral("playout 1.2.3\n"));
}

QTEST_GUILESS_MAIN(PlayoutOptionsTest)
#include "tst_playoutoptions.moc"
