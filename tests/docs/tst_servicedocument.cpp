#include "page.h"
#include "serviceprocess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// The examples in docs/service.md, carried out as they stand there.
class ServiceDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void repliesAreAsShown_data();
    void repliesAreAsShown();
    void stillWorkingIsAsShown();
    void whatCanBeSaidIsCarriedOut_data();
    void whatCanBeSaidIsCarriedOut();
    void optionsAreThoseOfTheHelp();

private:
    QString run(ServiceProcess &service, QString command);
    QString runUntilReady(const QString &command);
    void rememberIds(const QString &documentedReply, const QString &reply);
    QString askInWords(const QString &question, const QString &type, const QString &path);

    QString document;
    QTemporaryDir folder;
    ServiceProcess ready;
    QVector<QPair<QString, QString>> ids; ///< as documented, and as given here
};

namespace {

constexpr int patienceMs = 60000;
const char *const working = R"({"code":1,"message":"Still working."})";

/// A command of the page, and what the page shows as its reply.
struct Example {
    QString command;
    QString reply;
};

QVector<Example> examplesIn(const QString &block)
{
    QVector<Example> examples;
    const QStringList lines = block.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("$ ")))
            examples.append({line.mid(2), {}});
        else if (!examples.isEmpty())
            examples.last().reply += line;
    }
    return examples;
}

// Without what differs from run to run: ids, the port, the size of a picture's file.
QString comparable(QString reply)
{
    reply.replace(QRegularExpression(QStringLiteral("[0-9a-f]{32}")), QStringLiteral("<id>"));
    reply.replace(QRegularExpression(QStringLiteral("127\\.0\\.0\\.1:\\d+")), QStringLiteral("<address>"));
    return reply.replace(QRegularExpression(QStringLiteral("\"pictureBytes\":\\d{4,}")),
                         QStringLiteral("\"pictureBytes\":<size>"));
}

QStringList idsIn(const QString &reply)
{
    QStringList list;
    const QRegularExpression id(QStringLiteral("[0-9a-f]{32}"));
    for (auto matches = id.globalMatch(reply); matches.hasNext();)
        list += matches.next().captured();
    return list;
}

} // namespace

void ServiceDocumentTest::initTestCase()
{
    document = page::contents(QStringLiteral("docs/service.md"));
    const QStringList bodies = page::blocks(document, QStringLiteral("json"));
    QCOMPARE(bodies.size(), 2);
    const char *const names[] = {"question.json", "picture.json"};
    for (int index = 0; index < 2; ++index) {
        QFile file(folder.filePath(QLatin1String(names[index])));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(bodies.at(index).toUtf8());
    }
    QVERIFY(ready.start());
}

QString ServiceDocumentTest::run(ServiceProcess &service, QString command)
{
    for (const auto &[documented, given] : qAsConst(ids))
        command.replace(documented, given);
    command.replace(QStringLiteral("http://127.0.0.1:8080"), service.url({}).toString());
    QProcess shell;
    shell.setWorkingDirectory(folder.path());
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), QStringLiteral("exec ") + command + QStringLiteral(" -s")});
    return shell.waitForFinished(patienceMs) ? QString::fromUtf8(shell.readAllStandardOutput()) : QString();
}

// A picture takes as long as the machine needs for it.
QString ServiceDocumentTest::runUntilReady(const QString &command)
{
    QElapsedTimer watch;
    watch.start();
    QString reply = run(ready, command);
    while (reply == QLatin1String(working) && watch.elapsed() < patienceMs)
        reply = run(ready, command);
    return reply;
}

void ServiceDocumentTest::rememberIds(const QString &documentedReply, const QString &reply)
{
    const QStringList documented = idsIn(documentedReply);
    const QStringList given = idsIn(reply);
    QCOMPARE(given.size(), documented.size());
    for (int index = 0; index < given.size(); ++index)
        ids.append({documented.at(index), given.at(index)});
}

void ServiceDocumentTest::repliesAreAsShown_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("reply");
    int number = 0;
    const QStringList blocks = page::blocks(document, QString());
    for (const QString &block : blocks) {
        const auto examples = examplesIn(block);
        for (const Example &example : examples)
            QTest::addRow("%d: %s", ++number, qPrintable(example.command)) << example.command << example.reply;
    }
    QVERIFY(number > 5);
}

void ServiceDocumentTest::repliesAreAsShown()
{
    QFETCH(QString, command);
    QFETCH(QString, reply);
    if (reply == QLatin1String(working))
        return; // see stillWorkingIsAsShown()
    const QString given = runUntilReady(command);
    // A picture goes into a file, and the page shows nothing.
    QCOMPARE(comparable(given), comparable(reply));
    rememberIds(reply, given);
    if (reply.isEmpty()) {
        QFile picture(folder.filePath(QStringLiteral("picture.png")));
        QVERIFY(picture.open(QFile::ReadOnly));
        QVERIFY(picture.read(8).startsWith("\x89PNG"));
    }
}

void ServiceDocumentTest::stillWorkingIsAsShown()
{
    QVERIFY(document.contains(QLatin1String(working)));
    ServiceProcess slow;
    QVERIFY(slow.start({QStringLiteral("--work-ms"), QStringLiteral("600000")}));
    const QString accepted =
        run(slow, QStringLiteral("curl --json @question.json http://127.0.0.1:8080/ai/texttotext/generate/"));
    const QString id = idsIn(accepted).value(0);
    QVERIFY(!id.isEmpty());
    const QString poll =
        QStringLiteral(R"(curl --json '{"type":false,"reqId":"%1"}' http://127.0.0.1:8080/ai/result/filter/)");
    QCOMPARE(run(slow, poll.arg(id)), QString::fromLatin1(working));
}

void ServiceDocumentTest::whatCanBeSaidIsCarriedOut_data()
{
    QTest::addColumn<QString>("question");
    const auto rows = page::table(document, QStringLiteral("you can say"));
    QVERIFY(rows.size() > 3);
    for (const QStringList &row : rows) {
        for (const QString &question : page::found(row.value(1), QStringLiteral("\"([^\"]+)\"")))
            QTest::newRow(qPrintable(question)) << question;
    }
}

QString ServiceDocumentTest::askInWords(const QString &question, const QString &type, const QString &path)
{
    const bool isPicture = type == QLatin1String("true");
    QFile example(folder.filePath(isPicture ? QStringLiteral("picture.json") : QStringLiteral("question.json")));
    if (!example.open(QFile::ReadOnly))
        return {};
    QJsonObject body = QJsonDocument::fromJson(example.readAll()).object();
    body[QStringLiteral("content")] = question;
    body[QStringLiteral("messages")] =
        QJsonArray{QJsonObject{{QStringLiteral("type"), false}, {QStringLiteral("content"), question}}};
    body[QStringLiteral("mediaList")] = QJsonArray{
        QJsonObject{{QStringLiteral("id"), QStringLiteral("m1")}, {QStringLiteral("name"), QStringLiteral("Harbour")}},
        QJsonObject{{QStringLiteral("id"), QStringLiteral("m2")},
                    {QStringLiteral("name"), QStringLiteral("Sunset Beach")}},
        QJsonObject{{QStringLiteral("id"), QStringLiteral("m3")},
                    {QStringLiteral("name"), QStringLiteral("海港夜景")}}};
    QFile file(folder.filePath(QStringLiteral("asked.json")));
    if (!file.open(QFile::WriteOnly) || file.write(QJsonDocument(body).toJson()) < 0)
        return {};
    file.close();
    const QString accepted = run(ready, QStringLiteral("curl --json @asked.json http://127.0.0.1:8080%1").arg(path));
    return runUntilReady(
        QStringLiteral(R"(curl --json '{"type":%1,"reqId":"%2"}' http://127.0.0.1:8080/ai/result/filter/)")
            .arg(type, idsIn(accepted).value(0)));
}

void ServiceDocumentTest::whatCanBeSaidIsCarriedOut()
{
    QFETCH(QString, question);
    const bool isPicture = question.startsWith(QLatin1String("a "));
    const QString reply = isPicture
        ? askInWords(question, QStringLiteral("true"), QStringLiteral("/ai/texttoimage/generate/"))
        : askInWords(question, QStringLiteral("false"), QStringLiteral("/ai/texttotext/generate/"));
    const QJsonObject data = QJsonDocument::fromJson(reply.toUtf8()).object().value(QStringLiteral("data")).toObject();
    QVERIFY2(!data.value(QStringLiteral("agentCmds")).toArray().isEmpty(), qPrintable(reply));
}

void ServiceDocumentTest::optionsAreThoseOfTheHelp()
{
    QStringList documented;
    const auto rows = page::table(document, QStringLiteral("option"));
    for (const QStringList &row : rows)
        documented += page::found(row.first(), QStringLiteral("--[a-z-]+"));
    documented.sort();
    QProcess service;
    service.start(QStringLiteral(ASSISTANTSERVICE_PROGRAM), {QStringLiteral("--help")});
    QVERIFY(service.waitForFinished(patienceMs));
    const QString help = QString::fromUtf8(service.readAllStandardOutput());
    QStringList options = page::found(help, QStringLiteral("(?m)^ .*?(--[a-z-]+)"));
    options.removeOne(QStringLiteral("--help-all"));
    QCOMPARE(documented, options);
}

QTEST_GUILESS_MAIN(ServiceDocumentTest)
#include "tst_servicedocument.moc"
