#include "consolehost/consoleprocess.h"
#include "support/waiting.h"

#include <QFile>
#include <QImage>
#include <QTest>

using namespace tavro::testsupport;

// The real program against the real service.
class ConsoleHostServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { host = std::make_unique<ConsoleProcess>(); }
    void playsAMediaItem();
    void drawsAndSavesAPicture();
    void keepsAConversation();
    void isRefusedWithoutTheToken();

private:
    QStringList arguments(const QStringList &more) const;

    QProcess service;
    QString address;
    QTemporaryDir media;
    std::unique_ptr<ConsoleProcess> host;
};

void ConsoleHostServiceTest::initTestCase()
{
    for (const char *name : {"harbour.mp4", "night market.png", "station ident.mov"})
        QVERIFY(QFile(media.filePath(QLatin1String(name))).open(QFile::WriteOnly));
    service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    service.start(QStringLiteral(ASSISTANTSERVICE_PROGRAM),
                  {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--work-ms"),
                   QStringLiteral("0"), QStringLiteral("--token"), QStringLiteral("secret")});
    QVERIFY(eventually([this] { return service.canReadLine(); }));
    const QString line = QString::fromUtf8(service.readLine()).trimmed();
    const QString prefix = QStringLiteral("assistantservice listening on ");
    QVERIFY2(line.startsWith(prefix), qPrintable(line));
    address = line.mid(prefix.size());
}

void ConsoleHostServiceTest::cleanupTestCase()
{
    host.reset();
    service.terminate();
    QVERIFY(eventually([this] { return service.state() == QProcess::NotRunning; }));
    QCOMPARE(service.exitCode(), 0);
}

QStringList ConsoleHostServiceTest::arguments(const QStringList &more) const
{
    return QStringList{QStringLiteral("--service"), address, QStringLiteral("--media"), media.path()} + more;
}

void ConsoleHostServiceTest::playsAMediaItem()
{
    host->start(arguments({QStringLiteral("--token=secret"), QStringLiteral("--ask"),
                           QStringLiteral("play the harbour clip on layer 2 at half volume")}));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->err(), QString());
    QVERIFY2(host->outLines().contains(
                 QStringLiteral("command: 999 (library media): play, media \"harbour.mp4\", layer 2, volume 0.5")),
             qPrintable(host->out()));
}

void ConsoleHostServiceTest::drawsAndSavesAPicture()
{
    host->start(
        arguments({QStringLiteral("--token=secret"), QStringLiteral("--ratio=4:3"), QStringLiteral("--download"),
                   QStringLiteral("--picture"), QStringLiteral("a harbour at night")}));
    QCOMPARE(host->status(), 0);
    QVERIFY2(host->outLines().contains(QStringLiteral("picture: 1920x1440")), qPrintable(host->out()));
    const QString path = host->pictureFolder() + QStringLiteral("/download_1.jpg");
    QVERIFY(host->outLines().contains(QStringLiteral("saved: ") + path));
    QFile file(path);
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(QImage::fromData(file.readAll()).size(), QSize(1920, 1440));
}

void ConsoleHostServiceTest::keepsAConversation()
{
    host->start(arguments({QStringLiteral("--token=secret")}));
    host->type(QStringLiteral("what is the capital of France?"));
    host->type(QStringLiteral("stop layer 2"));
    host->endInput();
    QCOMPARE(host->status(), 0);
    QVERIFY(!host->outLines().first().startsWith(QStringLiteral("command: ")));
    QVERIFY2(host->out().contains(QStringLiteral("command: 1001 (stop layer): layer 2")), qPrintable(host->out()));
}

void ConsoleHostServiceTest::isRefusedWithoutTheToken()
{
    host->start(arguments({QStringLiteral("--token=wrong"), QStringLiteral("--ask"), QStringLiteral("hello")}));
    QCOMPARE(host->status(), 2);
    QCOMPARE(host->out(), QString());
    QVERIFY(!host->err().isEmpty());
}

QTEST_GUILESS_MAIN(ConsoleHostServiceTest)
#include "tst_consolehostservice.moc"
