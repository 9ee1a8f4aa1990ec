#include "openai/picturefitting.h"
#include "openai/picturereply.h"
#include "pictures/picturepainter.h"

#include <QTest>

using namespace tavro::assistantservice;

class PicturePartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nearestShapeIsAskedFor_data();
    void nearestShapeIsAskedFor();
    void middleIsCutOut();
    void fittedPictureHasTheSize_data();
    void fittedPictureHasTheSize();
    void repliesAreRead_data();
    void repliesAreRead();
    void bytesThatAreNoPictureAreNone_data();
    void bytesThatAreNoPictureAreNone();
};

void PicturePartsTest::nearestShapeIsAskedFor_data()
{
    QTest::addColumn<QSize>("wanted");
    QTest::addColumn<QVector<QSize>>("offered");
    QTest::addColumn<QSize>("asked");
    const QVector<QSize> usual{{1024, 1024}, {1536, 1024}, {1024, 1536}};
    QTest::newRow("16:9") << QSize(3840, 2160) << usual << QSize(1536, 1024);
    QTest::newRow("9:16") << QSize(1080, 1920) << usual << QSize(1024, 1536);
    QTest::newRow("square") << QSize(500, 500) << usual << QSize(1024, 1024);
    QTest::newRow("5:4") << QSize(1920, 1536) << usual << QSize(1536, 1024);
    QTest::newRow("the largest") << QSize(500, 500) << QVector<QSize>{{256, 256}, {1024, 1024}, {512, 512}}
                                 << QSize(1024, 1024);
    QTest::newRow("any") << QSize(1920, 1080) << QVector<QSize>() << QSize(1920, 1080);
}

void PicturePartsTest::nearestShapeIsAskedFor()
{
    QFETCH(QSize, wanted);
    QFETCH(QVector<QSize>, offered);
    QFETCH(QSize, asked);
    QCOMPARE(nearestSize(wanted, offered), asked);
}

void PicturePartsTest::middleIsCutOut()
{
    QImage square(90, 90, QImage::Format_RGB32);
    square.fill(Qt::red);
    for (int y = 30; y < 60; ++y) {
        for (int x = 0; x < 90; ++x) {
            square.setPixelColor(x, y, Qt::green);
        }
    }
    const QImage wide = fitted(square, {180, 60});
    QCOMPARE(wide.size(), QSize(180, 60));
    QCOMPARE(wide.pixelColor(90, 2), QColor(Qt::green));
    QCOMPARE(wide.pixelColor(90, 57), QColor(Qt::green));
}

void PicturePartsTest::fittedPictureHasTheSize_data()
{
    QTest::addColumn<QSize>("given");
    QTest::addColumn<QSize>("wanted");
    QTest::newRow("larger") << QSize(64, 64) << QSize(320, 180);
    QTest::newRow("smaller") << QSize(320, 180) << QSize(16, 16);
    QTest::newRow("a single point") << QSize(1, 1) << QSize(160, 90);
    QTest::newRow("a line") << QSize(500, 1) << QSize(16, 64);
}

void PicturePartsTest::fittedPictureHasTheSize()
{
    QFETCH(QSize, given);
    QFETCH(QSize, wanted);
    QImage picture(given, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    const QImage result = fitted(picture, wanted);
    QCOMPARE(result.size(), wanted);
    QCOMPARE(result.pixelColor(wanted.width() / 2, wanted.height() / 2), QColor(Qt::blue));
}

void PicturePartsTest::repliesAreRead_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("url");
    QTest::newRow("base64") << QByteArray(R"({"data":[{"b64_json":"cGljdHVyZQ=="}]})") << true << QByteArray("picture")
                            << "";
    QTest::newRow("data address in base64")
        << QByteArray(R"({"data":[{"b64_json":"data:image/png;base64,cGljdHVyZQ=="}]})") << true
        << QByteArray("picture") << "";
    QTest::newRow("data address") << QByteArray(R"({"data":[{"url":"data:image/png;base64,cGljdHVyZQ=="}]})") << true
                                  << QByteArray("picture") << "";
    QTest::newRow("address") << QByteArray(R"({"data":[{"url":"https://h/p.png?sig=1"}]})") << true << QByteArray()
                             << "https://h/p.png?sig=1";
    QTest::newRow("file address") << QByteArray(R"({"data":[{"url":"file:///etc/passwd"}]})") << false << QByteArray()
                                  << "";
    QTest::newRow("broken lines") << QByteArray(R"({"data":[{"b64_json":"cGlj\r\ndHVy ZQ==\n"}]})") << true
                                  << QByteArray("picture") << "";
    QTest::newRow("alphabet of addresses")
        << QByteArray(R"({"data":[{"b64_json":"-_-_"}]})") << true << QByteArray::fromBase64("+/+/") << "";
    QTest::newRow("no padding") << QByteArray(R"({"data":[{"b64_json":"cGljdHVyZQ"}]})") << true
                                << QByteArray("picture") << "";
    QTest::newRow("another alphabet") << QByteArray(R"({"data":[{"b64_json":"cGl\u0416"}]})") << false << QByteArray()
                                      << "";
    QTest::newRow("padding in the middle")
        << QByteArray(R"({"data":[{"b64_json":"cGl=dHVy"}]})") << false << QByteArray() << "";
    QTest::newRow("address with a password")
        << QByteArray(R"({"data":[{"url":"https://a:b@h/p.png"}]})") << false << QByteArray() << "";
    QTest::newRow("broken base64") << QByteArray(R"({"data":[{"b64_json":"***"}]})") << false << QByteArray() << "";
    QTest::newRow("nothing in it") << QByteArray(R"({"data":[]})") << false << QByteArray() << "";
    QTest::newRow("an error") << QByteArray(R"({"error":{"message":"no"}})") << false << QByteArray() << "";
    QTest::newRow("no JSON") << QByteArray("<html>") << false << QByteArray() << "";
}

void PicturePartsTest::repliesAreRead()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, readable);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, url);
    const auto reply = readPictureReply(body);
    QCOMPARE(reply.has_value(), readable);
    QCOMPARE(reply.value_or(PictureReply()).bytes, bytes);
    QCOMPARE(reply.value_or(PictureReply()).url.toString(), url);
}

void PicturePartsTest::bytesThatAreNoPictureAreNone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray huge = encodePng(picture, std::atomic<bool>(false));
    // The width in the head of a PNG.
    huge.replace(16, 4, QByteArray::fromHex("00100000"));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a page") << QByteArray("<html></html>");
    QTest::newRow("absurd size") << huge;
}

void PicturePartsTest::bytesThatAreNoPictureAreNone()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(decodedPicture(bytes).isNull());
}

QTEST_GUILESS_MAIN(PicturePartsTest)
#include "tst_pictureparts.moc"
