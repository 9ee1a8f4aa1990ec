#include "controllerfixture.h"
#include "picturebytes.h"

#include <QImageReader>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QTest>

#include <algorithm>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

PicturedGeneratedPack packOf(const QString &url)
{
    PicturedGeneratedPack pack;
    pack.content = "a mountain";
    pack.picInfo.style = "oil";
    pack.picInfo.width = 1280;
    pack.source.description = "snow and rock";
    pack.source.url = url.toStdString();
    return pack;
}

PicturedGeneratedPack packAt(const ControllerFixture &f, const QByteArray &path = picturePath)
{
    return packOf(f.server.url() + QString::fromLatin1(path));
}

bool fetch(ControllerFixture &f, const PicturedGeneratedPack &pack)
{
    f.controller.queryImageData(pack);
    return f.signalled.generatePictureFinished.waitFor(1) && f.repliesDone();
}

AIImage imageOf(const ControllerFixture &f, int index = 0)
{
    return f.signalled.generatePictureFinished.argument<2>(index);
}

bool isEmpty(const AIImage &image)
{
    return image.pixmap.isNull() && image.description.empty() && image.url.empty();
}

bool isAsked(const ControllerFixture &f, const PicturedGeneratedPack &pack, int index = 0)
{
    const auto info = f.signalled.generatePictureFinished.argument<1>(index);
    return f.signalled.generatePictureFinished.argument<0>(index) == QString::fromStdString(pack.content)
        && info.style == pack.picInfo.style && info.width == pack.picInfo.width;
}

QString unreadableText()
{
    return QStringLiteral("convert raw data to QPixmap object failed.");
}

// Qt's readers have their own words for broken files.
ExpectedLog readersMayComplain(LogCatcher &log)
{
    return ExpectedLog(log, QRegularExpression(QStringLiteral("libpng|JPEG|Corrupt|Premature|QImage")), 0);
}

QVector<QByteArray> namesOfHeaders(const HttpRequest &request)
{
    QVector<QByteArray> names;
    for (const HttpRequest::Header &header : request.headers)
        names.append(header.first);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

class ImageFetchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pictureIsAnnouncedWithItsQuestion_data();
    void pictureIsAnnouncedWithItsQuestion();
    void bytesThatAreNoPictureAnnounceAnEmptyImage_data();
    void bytesThatAreNoPictureAnnounceAnEmptyImage();
    void networkErrorIsAnnouncedAndThenLogged_data();
    void networkErrorIsAnnouncedAndThenLogged();
    void brokenConnectionWithinTheBodyGivesNoPicture();
    void redirectIsNotFollowed_data();
    void redirectIsNotFollowed();
    void requestCarriesNoHeadersOfItsOwn();
    void addressIsAskedForAsGiven();
    void decodingDoesNotBlockTheReply();
    void byNameThroughTheMetaObject();
    void answerStartsTheFetch();
};

void ImageFetchTest::pictureIsAnnouncedWithItsQuestion_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("png") << picturebytes::encoded("png");
    QTest::newRow("png with transparency") << picturebytes::transparentPng();
    QTest::newRow("png in black and white") << picturebytes::blackAndWhitePng({17, 9});
    QTest::newRow("png 7680x4320") << picturebytes::blackAndWhitePng({7680, 4320});
    QTest::newRow("jpeg") << picturebytes::encoded("jpg", {64, 36});
    QTest::newRow("bmp") << picturebytes::encoded("bmp");
    QTest::newRow("gif") << picturebytes::gif();
    QTest::newRow("png and rubbish behind it") << picturebytes::encoded("png") + "rubbish";
}

void ImageFetchTest::pictureIsAnnouncedWithItsQuestion()
{
    QFETCH(QByteArray, bytes);
    const QImage expected = QImage::fromData(bytes);
    QVERIFY(!expected.isNull());
    ControllerFixture f;
    // What the server calls it does not count.
    f.server.expect("GET", picturePath, ScriptedAnswer::bytes(bytes, "text/plain"));
    const PicturedGeneratedPack pack = packAt(f);
    QVERIFY(fetch(f, pack));

    const AIImage image = imageOf(f);
    QCOMPARE(image.pixmap.size(), expected.size());
    const QImage::Format format = image.pixmap.toImage().format();
    QCOMPARE(image.pixmap.toImage().pixel(0, 0), expected.convertToFormat(format).pixel(0, 0));
    QCOMPARE(image.pixmap.hasAlphaChannel(), expected.hasAlphaChannel());
    QCOMPARE(image.description, std::string("snow and rock"));
    QCOMPARE(image.url, pack.source.url);
    QVERIFY(isAsked(f, pack));
    QCOMPARE(f.signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QVERIFY(f.d.pendingImagePack.source.url.empty());
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::bytesThatAreNoPictureAnnounceAnEmptyImage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray png = picturebytes::noisyPng({40, 40});
    QTest::newRow("html") << picturebytes::html();
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("one byte") << QByteArray("\x89");
    QTest::newRow("json") << QByteArray(R"({"code":7,"message":"no such picture"})");
    QTest::newRow("half a png") << picturebytes::halfOf(png);
    QTest::newRow("png without its last bytes") << png.left(png.size() - 14);
    QTest::newRow("half a jpeg") << picturebytes::halfOf(picturebytes::encoded("jpg", {64, 64}));
    QTest::newRow("png signature and rubbish") << png.left(8) + QByteArray(100, 'x');
    QTest::newRow("png header only") << picturebytes::pngHeaderOnly({4, 4});
    QTest::newRow("webp") << picturebytes::webp();
}

// A reader may still give a part of a broken picture, and which formats there are depends on Qt's plugins: what Qt
// itself makes of the bytes is what is to be announced.
void ImageFetchTest::bytesThatAreNoPictureAnnounceAnEmptyImage()
{
    QFETCH(QByteArray, bytes);
    ControllerFixture f;
    const ExpectedLog broken = readersMayComplain(f.log);
    QPixmap expected;
    const bool isPicture = expected.loadFromData(bytes);
    f.log.forget();
    f.server.expect("GET", picturePath, ScriptedAnswer::bytes(bytes, "image/png"));
    const PicturedGeneratedPack pack = packAt(f);
    QVERIFY(fetch(f, pack));

    QCOMPARE(f.signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QCOMPARE(imageOf(f).pixmap.isNull(), !isPicture);
    QCOMPARE(isEmpty(imageOf(f)), !isPicture);
    QVERIFY(isAsked(f, pack));
    QCOMPARE(f.log.count(unreadableText()), isPicture ? 0 : 1);
    QCOMPARE(f.log.hostLines().size(), 0);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::networkErrorIsAnnouncedAndThenLogged_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("error");
    QTest::newRow("400") << QByteArray("400") << 302;
    QTest::newRow("401") << QByteArray("401") << 204;
    QTest::newRow("403") << QByteArray("403") << 201;
    QTest::newRow("404") << QByteArray("404") << 203;
    QTest::newRow("500") << QByteArray("500") << 401;
    QTest::newRow("503") << QByteArray("503") << 403;
    QTest::newRow("dropped") << QByteArray("drop") << 2;
    QTest::newRow("cut off within the body") << QByteArray("cut") << 2;
    QTest::newRow("refused") << QByteArray("refused") << 1;
    QTest::newRow("empty address") << QByteArray("empty") << 301;
    QTest::newRow("no address") << QByteArray("word") << 301;
}

void ImageFetchTest::networkErrorIsAnnouncedAndThenLogged()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, error);
    ControllerFixture f;
    PicturedGeneratedPack pack = packAt(f);
    if (const int status = kind.toInt())
        f.server.expect("GET", picturePath,
                        ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png").withStatus(status));
    else if (kind == "drop")
        f.server.always("GET", picturePath, ScriptedAnswer::drop());
    else if (kind == "cut")
        f.server.expect("GET", picturePath, ScriptedAnswer::bytes(picturebytes::noisyPng({40, 40})).cutAfter(2000));
    else if (kind == "refused")
        f.server.stopListening();
    else
        pack.source.url = kind == "empty" ? "" : "nowhere";

    int linesWhenAnnounced = -1;
    f.controller.sigGeneratePictureFinished.connect(
        [&](const auto &, const auto &, const auto &) { linesWhenAnnounced = f.log.hostLines().size(); });
    const ExpectedLog failure(f.log, QStringLiteral("slotQueryImageDataFinished_"));
    const ExpectedLog refusal(f.log, QStringLiteral("only http and https"), error == 301 ? 1 : 0);
    QVERIFY(fetch(f, pack));

    QVERIFY(isEmpty(imageOf(f)));
    QVERIFY(isAsked(f, pack));
    QCOMPARE(f.signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QVERIFY(!f.log.contains(unreadableText()));
    QCOMPARE(linesWhenAnnounced, 0);
    const QVector<LogLine> lines = f.log.hostLines();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().level, LogLine::Level::Error);
    const QString text =
        QStringLiteral("slotQueryImageDataFinished_ errorcode %1 url %2 \n //aicontroller_images:%3()#%4.");
    QCOMPARE(
        lines.first().text,
        text.arg(error).arg(QString::fromStdString(pack.source.url), lines.first().function).arg(lines.first().line));
    QVERIFY(!lines.first().function.isEmpty());
    QVERIFY(lines.first().line > 0);
    QVERIFY(f.d.pendingImagePack.source.url.empty());
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

// Qt tells of such an end as an error or as a short body.
void ImageFetchTest::brokenConnectionWithinTheBodyGivesNoPicture()
{
    ControllerFixture f;
    const ExpectedLog broken = readersMayComplain(f.log);
    const ExpectedLog failure(f.log, QStringLiteral("slotQueryImageDataFinished_ errorcode 2 "), 0);
    // Qt asks once more where it has read nothing yet.
    f.server.always("GET", picturePath,
                    ScriptedAnswer::bytes(picturebytes::noisyPng({100, 100})).heldAfter(2000).resetAfter(3000));
    f.controller.queryImageData(packAt(f));
    QVERIFY(eventually([&] {
        f.server.releaseNext();
        return f.signalled.generatePictureFinished.count() == 1;
    }));
    QVERIFY(f.repliesDone());
    QVERIFY(isEmpty(imageOf(f)));
    QCOMPARE(failure.seen() + f.log.count(unreadableText()), 1);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::redirectIsNotFollowed_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {301, 302, 303, 307, 308})
        QTest::addRow("%d", status) << status;
}

void ImageFetchTest::redirectIsNotFollowed()
{
    QFETCH(int, status);
    ControllerFixture f;
    f.server.expect("GET", picturePath, ScriptedAnswer::redirect(status, "/elsewhere"));
    const ExpectedLog failure(f.log, QRegularExpression(QStringLiteral("/elsewhere|errorcode 10 ")), 2);
    QVERIFY(fetch(f, packAt(f)));
    QVERIFY(isEmpty(imageOf(f)));
    QCOMPARE(f.log.count(unreadableText()), 0);
    QCOMPARE(f.server.requestCount(), 1);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::requestCarriesNoHeadersOfItsOwn()
{
    ControllerFixture f;
    f.controller.updateHeaderInfo({"secret", "7", "north"});
    f.server.always("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    QVERIFY(fetch(f, packAt(f)));

    QNetworkAccessManager plain;
    QNetworkReply *const reply = plain.get(QNetworkRequest(QUrl(QString::fromStdString(packAt(f).source.url))));
    QVERIFY(eventually([&] { return reply->isFinished(); }));
    const QVector<HttpRequest> requests = f.server.requests();
    QCOMPARE(requests.size(), 2);
    // What may be sent packed is told in another place of the head, and otherwise.
    QCOMPARE(namesOfHeaders(requests.at(0)), namesOfHeaders(requests.at(1)));
    for (const char *name : {"token", "userId", "node", "deviceId", "Content-Type", "Cookie"})
        QVERIFY2(!requests.first().header(name), name);
    QVERIFY(requests.first().body.isEmpty());
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::addressIsAskedForAsGiven()
{
    ControllerFixture f;
    const QByteArray target = QByteArrayLiteral("/p/a%20b.png?sign=A%2FB&t=1");
    f.server.expect("GET", target, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    const PicturedGeneratedPack pack = packAt(f, target);
    QVERIFY(fetch(f, pack));
    QCOMPARE(f.server.requests().first().target, target);
    QCOMPARE(imageOf(f).url, pack.source.url);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::decodingDoesNotBlockTheReply()
{
    ControllerFixture f;
    f.server.expect("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png").held());
    f.controller.queryImageData(packAt(f));
    QVERIFY(eventually([&] { return f.server.heldCount() == 1; }));
    const auto *reply = f.d.downloadManager->findChild<QNetworkReply *>();
    QVERIFY(reply);
    // Called behind the controller's own slot, in the same emission.
    QString doneWithTheReply = QStringLiteral("not finished");
    connect(reply, &QNetworkReply::finished, this, [&] { doneWithTheReply = f.signalled.summary(); });
    f.server.releaseNext();
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(doneWithTheReply, QString());
    QVERIFY(f.repliesDone());
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::byNameThroughTheMetaObject()
{
    ControllerFixture f;
    f.server.expect("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    const PicturedGeneratedPack pack = packAt(f);
    QVERIFY(QMetaObject::invokeMethod(&f.controller, "queryImageData", Qt::QueuedConnection,
                                      Q_ARG(PicturedGeneratedPack, pack)));
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(imageOf(f).url, pack.source.url);
    QVERIFY(f.repliesDone());
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchTest::answerStartsTheFetch()
{
    ControllerFixture f;
    const PicturedGeneratedPack pack = packAt(f);
    f.server.expect("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    QVERIFY(f.askPicture());
    QVERIFY(f.poll(ControllerFixture::readyPicture(QString::fromStdString(pack.source.url), QStringLiteral("rock"))));
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(f.signalled.generatePictureFinished.argument<0>(0), QStringLiteral("a mountain"));
    QCOMPARE(f.signalled.generatePictureFinished.argument<1>(0).width, 640);
    QCOMPARE(imageOf(f).description, std::string("rock"));
    QCOMPARE(imageOf(f).url, pack.source.url);
    QCOMPARE(f.signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

QTEST_MAIN(ImageFetchTest)

#include "tst_imagefetch.moc"
