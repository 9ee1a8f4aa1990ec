#include "options.h"
#include "tokenfile.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <future>
#include <sys/stat.h>
#include <unistd.h>

using namespace tavro::assistantservice;

namespace {

OptionsResult read(const QString &arguments, const QByteArray &environmentToken = {},
                   const QString &stateFolder = QStringLiteral("/state"))
{
    return readOptions((QStringLiteral("assistantservice ") + arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts),
                       {environmentToken, {}, "playout-3", stateFolder});
}

bool writeFile(const QString &path, const QByteArray &bytes, mode_t mode)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()
        && ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

mode_t modeOf(const QString &path)
{
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

} // namespace

class ServiceTokenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isWantedWhereOtherMachinesReachTheService_data();
    void isWantedWhereOtherMachinesReachTheService();
    void comesFromTheFirstPlaceThatIsGiven();
    void losesItsOuterBlanks();
    void isRefused_data();
    void isRefused();
    void isNotRepeatedInAMessage();
    void isMadeOnceAndKept();
    void twoStartsAtOnceAgree();
    void isReadFromAFileOfOnesOwn();
    void filesAreRefused_data();
    void filesAreRefused();
    void cannotBeKeptWhereNothingCanBeWritten();
    void isShownToTheUserAloneAndNotToTheJournal();
};

void ServiceTokenTest::isWantedWhereOtherMachinesReachTheService_data()
{
    QTest::addColumn<QString>("listen");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *listen, const char *file) {
        QTest::newRow(listen) << QString::fromLatin1(listen) << QString::fromLatin1(file);
    };
    row("127.0.0.1:0", "");
    row("127.0.0.5:0", "");
    row("localhost:0", "");
    row("[::1]:0", "");
    row("0.0.0.0:0", "/state/token");
    row("[::]:0", "/state/token");
    row("192.168.7.9:0", "/state/token");
    row("127.example:0", "/state/token");
}

void ServiceTokenTest::isWantedWhereOtherMachinesReachTheService()
{
    QFETCH(QString, listen);
    const OptionsResult result = read(QStringLiteral("--listen ") + listen);
    QVERIFY2(result.run, qPrintable(result.text));
    QTEST(result.options.tokenFile, "file");
    QVERIFY(result.options.assistant.token.isEmpty());
    const OptionsResult open = read(QStringLiteral("--no-token --listen ") + listen);
    QVERIFY2(open.run, qPrintable(open.text));
    QVERIFY(open.options.tokenFile.isEmpty());
}

void ServiceTokenTest::comesFromTheFirstPlaceThatIsGiven()
{
    const QString everywhere = QStringLiteral("--listen 0.0.0.0:0 ");
    const Options environment = read(everywhere, "variable").options;
    QCOMPARE(environment.assistant.token, QByteArray("variable"));
    QVERIFY(environment.tokenFile.isEmpty());
    const Options option = read(everywhere + QStringLiteral("--token option"), "variable").options;
    QCOMPARE(option.assistant.token, QByteArray("option"));
    QVERIFY(option.tokenFile.isEmpty());
    const Options file = read(QStringLiteral("--token-file /a/b"), "variable").options;
    QCOMPARE(file.tokenFile, QStringLiteral("/a/b"));
    QVERIFY(file.assistant.token.isEmpty());
}

void ServiceTokenTest::losesItsOuterBlanks()
{
    QCOMPARE(read({}, " a b\t\r\n").options.assistant.token, QByteArray("a b"));
    QVERIFY(read({}, " \t").options.assistant.token.isEmpty());
    QCOMPARE(read(QStringLiteral("--token a%41")).options.assistant.token, QByteArray("a%41"));
}

void ServiceTokenTest::isRefused_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *arguments, const QByteArray &variable, const char *message) {
        QTest::addRow("%s %s", arguments, variable.left(20).constData())
            << QString::fromUtf8(arguments) << variable << QString::fromUtf8(message);
    };
    row("--token=", {}, "--token is empty");
    row("--token=schlüssel", {}, "--token holds characters");
    row("--token=a\tb", {}, "--token holds characters");
    row("", "a\nb", "ASSISTANTSERVICE_TOKEN) holds characters");
    row("", QByteArray(4097, 'x'), "ASSISTANTSERVICE_TOKEN) is longer than 4096");
    row("--token=a --token-file=b", {}, "--token-file goes without --token");
    row("--token=a --no-token", {}, "--no-token goes without");
    row("--token-file=a --no-token", {}, "--no-token goes without");
    row("--no-token", "variable", "--no-token goes without ASSISTANTSERVICE_TOKEN");
    row("--token-file=", {}, "--token-file must name a file");
}

void ServiceTokenTest::isRefused()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, variable);
    QFETCH(QString, message);
    const OptionsResult result = read(arguments, variable);
    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.text.contains(message), qPrintable(result.text));
    const OptionsResult homeless = read(QStringLiteral("--listen 0.0.0.0:0"), {}, {});
    QVERIFY(!homeless.run);
    QVERIFY2(homeless.text.contains(QStringLiteral("--token-file is needed")), qPrintable(homeless.text));
}

void ServiceTokenTest::isNotRepeatedInAMessage()
{
    const QString text = read(QStringLiteral("--token secrét-word"), "other-secrét").text;
    QVERIFY(!text.isEmpty());
    QVERIFY2(!text.contains(QStringLiteral("secr")), qPrintable(text));
}

void ServiceTokenTest::isMadeOnceAndKept()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("new/folder/token"));
    const KeptToken first = readOrMakeToken(path);
    QVERIFY2(first.error.isEmpty(), qPrintable(first.error));
    QVERIFY(first.isNew);
    QCOMPARE(QByteArray::fromBase64(first.token, QByteArray::Base64UrlEncoding).size(), 32);
    QVERIFY(whyNoToken(first.token).isEmpty());
    QCOMPARE(modeOf(path), mode_t(0600));
    QCOMPARE(modeOf(folder.filePath(QStringLiteral("new/folder"))), mode_t(0700));
    QCOMPARE(QDir(folder.filePath(QStringLiteral("new/folder"))).entryList(QDir::Files),
             QStringList{QStringLiteral("token")});
    const KeptToken second = readOrMakeToken(path);
    QVERIFY(!second.isNew);
    QCOMPARE(second.token, first.token);
    const KeptToken other = readOrMakeToken(folder.filePath(QStringLiteral("other")));
    QVERIFY(other.isNew);
    QVERIFY(other.token != first.token);
}

// Whoever comes second takes the token of the first: else its clients would be turned away after the next start.
void ServiceTokenTest::twoStartsAtOnceAgree()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("token"));
    for (int round = 0; round < 50; ++round) {
        QFile::remove(path);
        auto other = std::async(std::launch::async, [&path] { return readOrMakeToken(path); });
        const KeptToken mine = readOrMakeToken(path);
        const KeptToken theirs = other.get();
        QVERIFY2(mine.error.isEmpty() && theirs.error.isEmpty(), qPrintable(mine.error + theirs.error));
        QCOMPARE(mine.token, theirs.token);
        QVERIFY(mine.isNew != theirs.isNew);
    }
}

void ServiceTokenTest::isReadFromAFileOfOnesOwn()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("token"));
    QVERIFY(writeFile(path, " secret word \n", 0400));
    const KeptToken kept = readOrMakeToken(path);
    QVERIFY2(kept.error.isEmpty(), qPrintable(kept.error));
    QVERIFY(!kept.isNew);
    QCOMPARE(kept.token, QByteArray("secret word"));
}

void ServiceTokenTest::filesAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("message");
    QTest::newRow("others read it") << QByteArray("hidden-word") << 0604
                                    << QStringLiteral("can be read by others; chmod 600");
    QTest::newRow("its group reads it") << QByteArray("hidden-word") << 0640 << QStringLiteral("can be read by others");
    QTest::newRow("others write it") << QByteArray("hidden-word") << 0602 << QStringLiteral("by others");
    QTest::newRow("empty") << QByteArray("\n") << 0600 << QStringLiteral("holds no token: it is empty");
    QTest::newRow("binary") << QByteArray("a\0b", 3) << 0600 << QStringLiteral("holds no token: it holds characters");
    QTest::newRow("endless") << QByteArray(100000, 'x') << 0600 << QStringLiteral("is longer than");
}

void ServiceTokenTest::filesAreRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(int, mode);
    QFETCH(QString, message);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("token"));
    QVERIFY(writeFile(path, content, static_cast<mode_t>(mode)));
    const KeptToken kept = readOrMakeToken(path);
    QVERIFY2(kept.error.contains(path) && kept.error.contains(message), qPrintable(kept.error));
    QVERIFY(!kept.error.contains(QStringLiteral("hidden-word")));
    const KeptToken noFile = readOrMakeToken(folder.path());
    QVERIFY2(noFile.error.contains(QStringLiteral("is not a file")), qPrintable(noFile.error));
}

void ServiceTokenTest::cannotBeKeptWhereNothingCanBeWritten()
{
    const KeptToken kept = readOrMakeToken(QStringLiteral("/proc/nowhere/token"));
    QVERIFY2(kept.error.contains(QStringLiteral("/proc/nowhere/token cannot be made: ")), qPrintable(kept.error));
    QVERIFY(kept.token.isEmpty());
}

void ServiceTokenTest::isShownToTheUserAloneAndNotToTheJournal()
{
    const KeptToken kept{"secret", true, {}};
    const QString shown = newTokenText(kept, QStringLiteral("/a/token"), true);
    QVERIFY(shown.contains(QStringLiteral("secret")) && shown.contains(QStringLiteral("/a/token")));
    const QString hidden = newTokenText(kept, QStringLiteral("/a/token"), false);
    QVERIFY(!hidden.contains(QStringLiteral("secret")) && hidden.contains(QStringLiteral("/a/token")));

    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("journal")));
    QVERIFY(file.open(QFile::WriteOnly));
    struct stat status { };
    QCOMPARE(::fstat(file.handle(), &status), 0);
    qputenv("JOURNAL_STREAM",
            QByteArray::number(qulonglong(status.st_dev)) + ':' + QByteArray::number(qulonglong(status.st_ino)));
    QVERIFY(isJournal(file.handle()));
    QVERIFY(!isJournal(-1));
    qputenv("JOURNAL_STREAM", "1:2");
    QVERIFY(!isJournal(file.handle()));
    qunsetenv("JOURNAL_STREAM");
    QVERIFY(!isJournal(file.handle()));
}

QTEST_GUILESS_MAIN(ServiceTokenTest)
#include "tst_servicetoken.moc"
