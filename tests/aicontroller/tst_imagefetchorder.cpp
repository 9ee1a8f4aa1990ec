#include "controllerfixture.h"
#include "picturebytes.h"

#include <QTest>

namespace {

const QByteArray pathA = QByteArrayLiteral("/pictures/a");
const QByteArray pathB = QByteArrayLiteral("/pictures/b");

PicturedGeneratedPack packAt(const ControllerFixture &f, const QByteArray &path)
{
    PicturedGeneratedPack pack;
    pack.content = "question " + path.toStdString();
    pack.picInfo.style = "style " + path.toStdString();
    pack.source.description = "description " + path.toStdString();
    pack.source.url = (f.server.url() + QString::fromLatin1(path)).toStdString();
    return pack;
}

ScriptedAnswer picture(QSize size)
{
    return ScriptedAnswer::bytes(picturebytes::encoded("png", size), "image/png");
}

QString skippingText()
{
    return QStringLiteral("Same image URL is already being requested, skipping...");
}

/// One announcement: what was asked, and the picture's width with its address.
QString told(const ControllerFixture &f, int index)
{
    const auto &recorder = f.signalled.generatePictureFinished;
    const AIImage image = recorder.argument<2>(index);
    return QStringLiteral("%1|%2|%3|%4|%5")
        .arg(recorder.argument<0>(index), QString::fromStdString(recorder.argument<1>(index).style))
        .arg(image.pixmap.width())
        .arg(QString::fromStdString(image.description), QString::fromStdString(image.url).section(QLatin1Char('/'), 3));
}

} // namespace

class ImageFetchOrderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameAddressIsAskedForOnce();
    void sameAddressIsAskedForAgainAfterTheReply();
    void secondAddressReplacesTheFirst_data();
    void secondAddressReplacesTheFirst();
    void announcementsKeepTheOrderOfArrival_data();
    void announcementsKeepTheOrderOfArrival();
    void pictureCanBeFetchedInsideTheSlot();
    void pictureOfAbsurdSizeIsRefused_data();
    void pictureOfAbsurdSizeIsRefused();
};

void ImageFetchOrderTest::sameAddressIsAskedForOnce()
{
    ControllerFixture f;
    f.server.expect("GET", pathA, picture({4, 4}).held());
    const PicturedGeneratedPack first = packAt(f, pathA);
    PicturedGeneratedPack second = first;
    second.content = "another question";
    f.controller.queryImageData(first);
    f.controller.queryImageData(second);
    QVERIFY(eventually([&] { return f.server.heldCount() == 1; }));
    f.controller.queryImageData(second);
    QCOMPARE(f.log.count(skippingText()), 2);
    QCOMPARE(f.openReplies(), 1);

    f.server.releaseNext();
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QVERIFY(f.repliesDone());
    QCOMPARE(told(f, 0), QStringLiteral("question /pictures/a|style /pictures/a|4|description /pictures/a|pictures/a"));
    QCOMPARE(f.signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QCOMPARE(f.server.requestCount(), 1);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchOrderTest::sameAddressIsAskedForAgainAfterTheReply()
{
    ControllerFixture f;
    f.server.expect("GET", pathA, picture({4, 4}));
    f.server.expect("GET", pathA, ScriptedAnswer::status(404));
    f.server.expect("GET", pathA, picture({6, 6}));
    const ExpectedLog failure(f.log, QStringLiteral("errorcode 203"));
    for (int round = 1; round <= 3; ++round) {
        f.controller.queryImageData(packAt(f, pathA));
        QVERIFY(f.signalled.generatePictureFinished.waitFor(round));
    }
    QVERIFY(f.repliesDone());
    QCOMPARE(f.server.requestCount(), 3);
    QVERIFY(!f.log.contains(skippingText()));
    QVERIFY(told(f, 1).endsWith(QStringLiteral("|0||")));
    QVERIFY(told(f, 2).contains(QStringLiteral("|6|")));
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchOrderTest::secondAddressReplacesTheFirst_data()
{
    QTest::addColumn<bool>("inOrder");
    QTest::addColumn<bool>("fails");
    QTest::newRow("replies in order") << true << false;
    QTest::newRow("replies the other way round") << false << false;
    QTest::newRow("first reply an error") << true << true;
}

// Only the pack that was asked for last is known: the first reply to arrive takes it, and none is left for the other.
void ImageFetchOrderTest::secondAddressReplacesTheFirst()
{
    QFETCH(bool, inOrder);
    QFETCH(bool, fails);
    ControllerFixture f;
    f.server.expect("GET", pathA, fails ? ScriptedAnswer::status(404).held() : picture({4, 4}).held());
    f.server.expect("GET", pathB, picture({8, 8}).held());
    f.controller.queryImageData(packAt(f, pathA));
    f.controller.queryImageData(packAt(f, pathB));
    QVERIFY(eventually([&] { return f.server.heldCount() == 2; }));
    const ExpectedLog failure(f.log, QStringLiteral("errorcode 203 url http"), fails ? 1 : 0);

    f.server.release(inOrder ? pathA : pathB);
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    f.server.releaseNext();
    QVERIFY(f.signalled.generatePictureFinished.waitFor(2));
    QVERIFY(f.repliesDone());

    const QString asked = QStringLiteral("question /pictures/b|style /pictures/b|");
    const QString answered = QStringLiteral("%1|description /pictures/b|pictures/b");
    QCOMPARE(told(f, 0), asked + (fails ? QStringLiteral("0||") : answered.arg(inOrder ? 4 : 8)));
    QCOMPARE(told(f, 1), QStringLiteral("||%1||").arg(inOrder ? 8 : 4));
    QCOMPARE(f.log.count(QStringLiteral("/pictures/b \n //")), fails ? 1 : 0);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchOrderTest::announcementsKeepTheOrderOfArrival_data()
{
    QTest::addColumn<QString>("second");
    QTest::newRow("then a small picture") << QStringLiteral("small");
    QTest::newRow("then no picture") << QStringLiteral("html");
    QTest::newRow("then no bytes") << QStringLiteral("nothing");
    QTest::newRow("then an error") << QStringLiteral("error");
    QTest::newRow("then an error without a network") << QStringLiteral("no address");
}

// The large picture is still being decoded when the next reply is there.
void ImageFetchOrderTest::announcementsKeepTheOrderOfArrival()
{
    QFETCH(QString, second);
    ControllerFixture f;
    f.server.expect("GET", pathA,
                    ScriptedAnswer::bytes(picturebytes::blackAndWhitePng({7680, 4320}), "image/png").held());
    PicturedGeneratedPack next = packAt(f, pathB);
    if (second == QStringLiteral("small"))
        f.server.expect("GET", pathB, picture({8, 8}));
    else if (second == QStringLiteral("html"))
        f.server.expect("GET", pathB, ScriptedAnswer::bytes(picturebytes::html(), "text/html"));
    else if (second == QStringLiteral("nothing"))
        f.server.expect("GET", pathB, ScriptedAnswer::status(200));
    else if (second == QStringLiteral("error"))
        f.server.expect("GET", pathB, ScriptedAnswer::status(404));
    else
        next.source.url = "nowhere";
    const ExpectedLog failure(f.log,
                              QRegularExpression(QStringLiteral("slotQueryImageDataFinished_|only http and https")), 0);

    f.controller.queryImageData(packAt(f, pathA));
    QVERIFY(eventually([&] { return f.server.heldCount() == 1; }));
    const auto *reply = f.d.downloadManager->findChild<QNetworkReply *>();
    connect(reply, &QNetworkReply::finished, &f.controller, [&] { f.controller.queryImageData(next); });
    f.server.releaseNext();

    QVERIFY(f.signalled.generatePictureFinished.waitFor(2));
    QVERIFY(f.repliesDone());
    QCOMPARE(told(f, 0),
             QStringLiteral("question /pictures/a|style /pictures/a|7680|description /pictures/a|pictures/a"));
    const bool isPicture = second == QStringLiteral("small");
    QCOMPARE(told(f, 1),
             QStringLiteral("question /pictures/b|style /pictures/b|")
                 + (isPicture ? QStringLiteral("8|description /pictures/b|pictures/b") : QStringLiteral("0||")));
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchOrderTest::pictureCanBeFetchedInsideTheSlot()
{
    ControllerFixture f;
    f.server.expect("GET", pathA, picture({4, 4}));
    f.server.expect("GET", pathA, picture({5, 5}));
    bool again = true;
    f.controller.sigGeneratePictureFinished.connect([&](const auto &, const auto &, const auto &) {
        if (std::exchange(again, false))
            f.controller.queryImageData(packAt(f, pathA));
    });
    f.controller.queryImageData(packAt(f, pathA));
    QVERIFY(f.signalled.generatePictureFinished.waitFor(2));
    QVERIFY(f.repliesDone());
    QVERIFY(told(f, 0).contains(QStringLiteral("|4|description")));
    QVERIFY(told(f, 1).contains(QStringLiteral("|5|description")));
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

void ImageFetchOrderTest::pictureOfAbsurdSizeIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("60000x60000, announced only") << picturebytes::pngHeaderOnly({60000, 60000});
    QTest::newRow("20000x20000, there") << picturebytes::blackAndWhitePng({20000, 20000});
    QTest::newRow("2147483647x2147483647, announced only") << picturebytes::pngHeaderOnly({2147483647, 2147483647});
}

// The second one is a whole picture that takes 1.6 GB once decoded: were it not refused, it would be announced.
void ImageFetchOrderTest::pictureOfAbsurdSizeIsRefused()
{
    QFETCH(QByteArray, bytes);
    ControllerFixture f;
    const ExpectedLog broken(f.log, QRegularExpression(QStringLiteral("libpng|QImage")), 0);
    f.server.expect("GET", pathA, ScriptedAnswer::bytes(bytes, "image/png"));
    f.controller.queryImageData(packAt(f, pathA));
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QVERIFY(f.repliesDone());
    QCOMPARE(told(f, 0), QStringLiteral("question /pictures/a|style /pictures/a|0||"));
    QCOMPARE(f.log.count(QStringLiteral("convert raw data to QPixmap object failed.")), 1);
    QCOMPARE(f.leftovers().join(QLatin1Char('\n')), QString());
}

QTEST_MAIN(ImageFetchOrderTest)

#include "tst_imagefetchorder.moc"
