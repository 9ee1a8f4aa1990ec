#include "consolehost/consoleprocess.h"
#include "support/servicescript.h"

#include <QFile>
#include <QTest>

using namespace tavro::testsupport;

class ConsoleHostCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void asksForPictures();
    void savesTheLastPicture();
    void clearBeginsANewConversation();
    void switchesTheModels();
    void listsTheMediaLibrary();
    void refusesWrongLines_data();
    void refusesWrongLines();

private:
    void start(const QStringList &options = {}) { host->start(service->arguments(options)); }
    void finishAnswered();

    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<ConsoleProcess> host;
};

void ConsoleHostCommandsTest::init()
{
    service = std::make_unique<ServiceScript>();
    host = std::make_unique<ConsoleProcess>();
}

void ConsoleHostCommandsTest::cleanup()
{
    host.reset();
    if (!QTest::currentTestFailed())
        QCOMPARE(service->leftovers(), QStringList());
    service.reset();
}

void ConsoleHostCommandsTest::finishAnswered()
{
    host->endInput();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->err(), QString());
}

void ConsoleHostCommandsTest::asksForPictures()
{
    service->expectPicture(pngBytes(16, 12));
    start({QStringLiteral("--style=ink")});
    host->type(QStringLiteral("/picture ratio=4:3  style=oil a quay style=new"));
    finishAnswered();
    const QJsonObject body = service->body(ServiceScript::picture);
    QCOMPARE(body.value(QStringLiteral("style")).toString(), QStringLiteral("oil"));
    QCOMPARE(body.value(QStringLiteral("height")).toInt(), 1440);
    QCOMPARE(body.value(QStringLiteral("content")).toString(), QStringLiteral("a quay style=new"));
    QCOMPARE(host->outLines().first(), QStringLiteral("picture: 16x12"));
}

void ConsoleHostCommandsTest::savesTheLastPicture()
{
    const QByteArray png = pngBytes(16, 12);
    service->expectPicture(png);
    start();
    host->type(QStringLiteral("/picture a quay"));
    host->type(QStringLiteral("/download"));
    finishAnswered();
    const QString path = host->pictureFolder() + QStringLiteral("/download_1.jpg");
    QCOMPARE(host->outLines().last(), QStringLiteral("saved: ") + path);
    QFile file(path);
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(), png);
}

void ConsoleHostCommandsTest::clearBeginsANewConversation()
{
    service->expectAnswer(QStringLiteral("first"));
    service->expectAnswer(QStringLiteral("second"));
    start();
    host->type(QStringLiteral("one"));
    host->type(QStringLiteral("/clear"));
    host->type(QStringLiteral("two"));
    finishAnswered();
    QCOMPARE(service->body(ServiceScript::text, 1).value(QStringLiteral("messages")).toArray().size(), 1);
}

void ConsoleHostCommandsTest::switchesTheModels()
{
    service->expectAnswer(QStringLiteral("first"));
    service->expectAnswer(QStringLiteral("second"));
    start({QStringLiteral("--online-search")});
    host->type(QStringLiteral("/deep on"));
    host->type(QStringLiteral("one"));
    host->type(QStringLiteral("/online off"));
    host->type(QStringLiteral("two"));
    finishAnswered();
    for (const int question : {0, 1}) {
        const QJsonObject body = service->body(ServiceScript::text, question);
        QCOMPARE(body.value(QStringLiteral("enableDS")).toBool(), true);
        QCOMPARE(body.value(QStringLiteral("enableNet")).toBool(), question == 0);
    }
}

void ConsoleHostCommandsTest::listsTheMediaLibrary()
{
    QTemporaryDir folder;
    QVERIFY(QFile(folder.filePath(QStringLiteral("harbour.mp4"))).open(QFile::WriteOnly));
    start({QStringLiteral("--media"), folder.path()});
    host->type(QStringLiteral("/media"));
    finishAnswered();
    QCOMPARE(host->out(), QStringLiteral("media: harbour.mp4\n"));
}

void ConsoleHostCommandsTest::refusesWrongLines_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("/sing") << QStringLiteral("unknown command: /sing (/help lists them)");
    QTest::newRow("/media now") << QStringLiteral("/media takes nothing behind it");
    QTest::newRow("/deep") << QStringLiteral("/deep takes on or off");
    QTest::newRow("/online yes") << QStringLiteral("/online takes on or off");
    QTest::newRow("/picture") << QStringLiteral("the description of the picture is empty");
    QTest::newRow("/picture style=ink") << QStringLiteral("the description of the picture is empty");
    QTest::newRow("/picture ratio=2:1 a quay") << QStringLiteral("unknown ratio: 2:1");
    QTest::newRow("/download") << QStringLiteral("there is no picture to save yet");
}

void ConsoleHostCommandsTest::refusesWrongLines()
{
    QFETCH(QString, message);
    start();
    host->type(QString::fromLatin1(QTest::currentDataTag()));
    host->endInput();
    QCOMPARE(host->status(), 2);
    QCOMPARE(host->out(), QString());
    QCOMPARE(host->err(), QStringLiteral("consolehost: %1\n").arg(message));
}

QTEST_GUILESS_MAIN(ConsoleHostCommandsTest)
#include "tst_consolehostcommands.moc"
