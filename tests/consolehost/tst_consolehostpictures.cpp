#include "consolehost/consoleprocess.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tavro::testsupport;

namespace {

QStringList picture(const QStringList &more = {})
{
    return QStringList{QStringLiteral("--picture"), QStringLiteral("a quay")} + more;
}

QJsonArray playGeneratedPicture()
{
    const QJsonObject params{{QStringLiteral("bPlay"), true}, {QStringLiteral("layerId"), 3}};
    return {QJsonObject{{QStringLiteral("cmdType"), 0}, {QStringLiteral("params"), params}}};
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class ConsoleHostPicturesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void printsThePicture();
    void asksForStyleAndSize_data();
    void asksForStyleAndSize();
    void savesThePicture();
    void playsThePicture();
    void playsAnEarlierPicture();
    void savesAndPlays();
    void failsWithoutAPicture_data();
    void failsWithoutAPicture();
    void pictureThatDoesNotComeTimesOut();
    void fileThatIsNotSavedTimesOut();

private:
    QString savedFile(int number) const;

    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<ConsoleProcess> host;
    const QByteArray png = pngBytes(160, 90);
};

void ConsoleHostPicturesTest::init()
{
    service = std::make_unique<ServiceScript>();
    host = std::make_unique<ConsoleProcess>();
}

void ConsoleHostPicturesTest::cleanup()
{
    host.reset();
    if (!QTest::currentTestFailed())
        QCOMPARE(service->leftovers(), QStringList());
    service.reset();
}

QString ConsoleHostPicturesTest::savedFile(int number) const
{
    return QStringLiteral("%1/download_%2.jpg").arg(host->pictureFolder()).arg(number);
}

void ConsoleHostPicturesTest::printsThePicture()
{
    service->expectPicture(png, {}, QStringLiteral("a quay\nat night"));
    host->start(service->arguments(picture()));
    QCOMPARE(host->status(), 0);
    const QStringList expected{
        QStringLiteral("picture: 160x90"),
        QStringLiteral("address: %1/pictures/1").arg(service->url()),
        QStringLiteral("description: a quay at night"),
    };
    QCOMPARE(host->outLines(), expected);
    QCOMPARE(host->err(), QString());
    QVERIFY(!QDir(host->pictureFolder()).exists());
}

void ConsoleHostPicturesTest::asksForStyleAndSize_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("height");
    QTest::newRow("nothing said") << QStringList() << QString() << 1080;
    QTest::newRow("16:9") << QStringList{QStringLiteral("--ratio=16:9")} << QString() << 1080;
    QTest::newRow("16:10") << QStringList{QStringLiteral("--ratio=16:10")} << QString() << 1200;
    QTest::newRow("5:4") << QStringList{QStringLiteral("--ratio=5:4")} << QString() << 1536;
    QTest::newRow("4:3") << QStringList{QStringLiteral("--ratio=4:3")} << QString() << 1440;
    QTest::newRow("style") << QStringList{QStringLiteral("--style=oil paint")} << QStringLiteral("oil paint") << 1080;
}

void ConsoleHostPicturesTest::asksForStyleAndSize()
{
    QFETCH(QStringList, options);
    service->expect("POST", ServiceScript::picture, ServiceScript::refused(QStringLiteral("seen")));
    host->start(service->arguments(picture(options)));
    QCOMPARE(host->status(), 2);
    const QJsonObject body = service->body(ServiceScript::picture);
    QCOMPARE(body.value(QStringLiteral("content")).toString(), QStringLiteral("a quay"));
    QCOMPARE(body.value(QStringLiteral("width")).toInt(), 1920);
    QTEST(body.value(QStringLiteral("height")).toInt(), "height");
    QTEST(body.value(QStringLiteral("style")).toString(), "style");
}

void ConsoleHostPicturesTest::savesThePicture()
{
    service->expectPicture(png);
    host->start(service->arguments(picture({QStringLiteral("--download")})));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->outLines().last(), QStringLiteral("saved: %1").arg(savedFile(1)));
    QCOMPARE(content(savedFile(1)), png);
}

void ConsoleHostPicturesTest::playsThePicture()
{
    service->expectPicture(png, playGeneratedPicture());
    host->start(service->arguments(picture()));
    QCOMPARE(host->status(), 0);
    QVERIFY(host->outLines().contains(
        QStringLiteral("command: 0 (generated picture): play, file \"%1\", layer 3").arg(savedFile(1))));
    QCOMPARE(content(savedFile(1)), png);
}

void ConsoleHostPicturesTest::playsAnEarlierPicture()
{
    service->expectPicture(png);
    service->expectAnswer(QStringLiteral("Playing it."), playGeneratedPicture());
    host->start(service->arguments(picture({QStringLiteral("--ask"), QStringLiteral("play it on layer 3")})));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->outLines().last(),
             QStringLiteral("command: 0 (generated picture): play, file \"%1\", layer 3").arg(savedFile(1)));
}

void ConsoleHostPicturesTest::savesAndPlays()
{
    service->expectPicture(png, playGeneratedPicture());
    host->start(service->arguments(picture({QStringLiteral("--download")})));
    QCOMPARE(host->status(), 0);
    const QString out = host->out();
    QCOMPARE(out.count(QStringLiteral("command: 0 (generated picture): play, file ")), 1);
    QCOMPARE(out.count(QStringLiteral("saved: ")), 1);
    QCOMPARE(content(savedFile(1)), png);
    QCOMPARE(content(savedFile(2)), png);
}

void ConsoleHostPicturesTest::failsWithoutAPicture_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");
    QTest::newRow("not there") << QByteArray() << 404;
    QTest::newRow("no picture") << QByteArrayLiteral("<html>no</html>") << 200;
}

void ConsoleHostPicturesTest::failsWithoutAPicture()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, status);
    service->expectPicture(bytes);
    service->always("GET", "/pictures/1", ScriptedAnswer::bytes(bytes).withStatus(status));
    host->start(service->arguments(picture()));
    QCOMPARE(host->status(), 2);
    QCOMPARE(host->out(), QString());
    QVERIFY(host->err().contains(QStringLiteral("consolehost: the picture cannot be fetched, or is none\n")));
}

void ConsoleHostPicturesTest::pictureThatDoesNotComeTimesOut()
{
    service->expectPicture(png);
    service->always("GET", "/pictures/1", ScriptedAnswer::bytes(png).held());
    host->start(service->arguments(picture({QStringLiteral("--timeout=1")})));
    QCOMPARE(host->status(), 3);
    QCOMPARE(host->err(), QStringLiteral("consolehost: the picture did not arrive in time\n"));
    service->releaseAll();
}

void ConsoleHostPicturesTest::fileThatIsNotSavedTimesOut()
{
    service->expectPicture(png);
    service->expect("GET", "/pictures/1", ScriptedAnswer::bytes(png));
    service->always("GET", "/pictures/1", ScriptedAnswer::status(404));
    host->start(service->arguments(picture({QStringLiteral("--timeout=1"), QStringLiteral("--download")})));
    QCOMPARE(host->status(), 3);
    QVERIFY(host->err().endsWith(QStringLiteral("consolehost: the picture was not saved in time\n")));
}

QTEST_GUILESS_MAIN(ConsoleHostPicturesTest)
#include "tst_consolehostpictures.moc"
