#include "aicontroller/rasterpicture.h"
#include "picturebytes.h"
#include "processusage.h"
#include "support/logcatcher.h"

#include <QImageReader>
#include <QTest>

#include <atomic>
#include <limits>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// What counts as a picture, whatever Qt could read.
class PictureFormatsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void formatsOfPictures_data();
    void formatsOfPictures();
    void sizeIsLookedAtFirst_data();
    void sizeIsLookedAtFirst();
    void abandonedPictureIsNone();

private:
    const std::atomic<bool> m_isWanted{false};
};

namespace {

QByteArray numbers(const std::initializer_list<int> &values, int bytesEach)
{
    QByteArray bytes;
    for (const int value : values) {
        for (int byte = 0; byte < bytesEach; ++byte)
            bytes.append(static_cast<char>((static_cast<quint32>(value) >> (8 * byte)) & 0xffU));
    }
    return bytes;
}

// Packed runs, of which there are none: all of it is background.
QByteArray bmp(int width, int height)
{
    constexpr int runsOfBytes = 1;
    const QByteArray info =
        numbers({40, width, height}, 4) + numbers({1, 8}, 2) + numbers({runsOfBytes, 2, 0, 0, 2, 0}, 4);
    const QByteArray colours = numbers({0, 0xffffff}, 4);
    const QByteArray endOfPicture("\0\1", 2);
    return "BM" + numbers({64}, 4) + numbers({0, 0}, 2) + numbers({62}, 4) + info + colours + endOfPicture;
}

// The screen is what is painted; the one frame on it has a single pixel.
QByteArray gifScreen(int width, int height)
{
    QByteArray gif = picturebytes::gif();
    return gif.replace(6, 4, numbers({width, height}, 2));
}

QByteArray gifFrame(int width, int height)
{
    QByteArray gif = gifScreen(width, height);
    const int frame = gif.indexOf(',', 13);
    return gif.replace(frame + 5, 4, numbers({width, height}, 2));
}

QByteArray jpegHeader(int width, int height)
{
    QByteArray jpeg = picturebytes::encoded("jpg", {16, 16});
    const int frame = jpeg.indexOf("\xff\xc0");
    const auto high = [](int value) { return static_cast<char>(value / 256); };
    const auto low = [](int value) { return static_cast<char>(value % 256); };
    return jpeg.replace(frame + 5, 4, QByteArray() + high(height) + low(height) + high(width) + low(width));
}

QByteArray tiffHeader(int width, int height)
{
    QByteArray tiff = "II" + numbers({42}, 2) + numbers({8}, 4) + numbers({9}, 2);
    const auto add = [&tiff](int tag, int value) { tiff += numbers({tag, 4}, 2) + numbers({1, value}, 4); };
    add(256, width);
    add(257, height);
    add(258, 8);
    add(259, 1);
    add(262, 1);
    add(273, 122);
    add(277, 1);
    add(278, height);
    add(279, 100);
    return tiff + numbers({0}, 4) + QByteArray(100, 'x');
}

} // namespace

void PictureFormatsTest::formatsOfPictures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isPicture");
    for (const char *format : {"png", "jpg", "bmp"})
        QTest::newRow(format) << picturebytes::encoded(format) << true;
    QTest::newRow("gif") << picturebytes::gif() << true;
    QTest::newRow("small bmp of runs") << bmp(4, 4) << true;
    QTest::newRow("webp, where Qt has it")
        << picturebytes::webp() << QImageReader::supportedImageFormats().contains("webp");
    for (const char *format : {"ppm", "xpm", "xbm", "ico"})
        QTest::newRow(format) << picturebytes::encoded(format) << false;
    const QByteArray svg =
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="4" height="4"><rect width="4" height="4"/></svg>)";
    QTest::newRow("svg") << svg << false;
    QTest::newRow("html") << picturebytes::html() << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void PictureFormatsTest::formatsOfPictures()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isPicture);
    QCOMPARE(!decodeRaster(bytes, m_isWanted).isNull(), isPicture);
}

void PictureFormatsTest::sizeIsLookedAtFirst_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("png") << picturebytes::blackAndWhitePng({12'000, 12'000});
    QTest::newRow("png, head only") << picturebytes::pngHeaderOnly({15'000, 15'000});
    QTest::newRow("jpeg") << jpegHeader(15'000, 15'000);
    QTest::newRow("bmp") << bmp(15'000, 15'000);
    QTest::newRow("bmp from the top") << bmp(15'000, -15'000);
    QTest::newRow("bmp, least number") << bmp(1, std::numeric_limits<int>::min());
    QTest::newRow("gif, screen") << gifScreen(15'000, 15'000);
    QTest::newRow("gif, frame") << gifFrame(15'000, 15'000);
    QTest::newRow("tiff") << tiffHeader(15'000, 15'000);
}

void PictureFormatsTest::sizeIsLookedAtFirst()
{
    QFETCH(QByteArray, bytes);
    LogCatcher log;
    const ExpectedLog broken(log, QRegularExpression(QStringLiteral("libpng|JPEG|Corrupt|Premature|QImage")), 0);
    QVERIFY(processusage::forgetPeak());
    const qint64 before = processusage::peakBytes();
    const QImage picture = decodeRaster(bytes, m_isWanted);
    QVERIFY(processusage::peakBytes() - before < 64 * 1024 * 1024);
    QVERIFY(picture.isNull());
}

void PictureFormatsTest::abandonedPictureIsNone()
{
    const QByteArray bytes = picturebytes::noisyPng({100, 100});
    const std::atomic<bool> isAbandoned{true};
    QVERIFY(!decodeRaster(bytes, m_isWanted).isNull());
    QVERIFY(decodeRaster(bytes, isAbandoned).isNull());
}

QTEST_MAIN(PictureFormatsTest)

#include "tst_pictureformats.moc"
