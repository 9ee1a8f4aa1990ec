#include "builtin/builtinengine.h"
#include "pictures/picturepainter.h"
#include "pictures/stylenames.h"
#include "pictures/subject.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cmath>

using namespace tavro::assistantservice;

namespace {

const QStringList styleNames{QStringLiteral("Portrait Photography"),
                             QStringLiteral("Ink Painting"),
                             QStringLiteral("Watercolor Painting"),
                             QStringLiteral("Flat Illustration"),
                             QStringLiteral("Landscape"),
                             QStringLiteral("Printmaking"),
                             QStringLiteral("Monet"),
                             QStringLiteral("Picasso"),
                             QStringLiteral("Rembrandt"),
                             QStringLiteral("Matisse")};

const std::atomic<bool> notCancelled{false};

PictureRequest wish(const QString &style, const QString &prompt, const QSize &size = QSize(320, 180))
{
    PictureRequest request;
    request.style = style;
    request.prompt = prompt;
    request.size = size;
    return request;
}

PictureResult draw(const PictureRequest &request)
{
    return BuiltinEngine().draw(request, notCancelled);
}

// How far two pictures are apart on the average, from 0 to 255.
double distance(const QImage &a, const QImage &b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    }
    return sum / (3.0 * a.width() * a.height());
}

} // namespace

class ServicePicturesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesUpEncodingOnceCancelled();
    void theSameRequestGivesTheSameBytes_data();
    void theSameRequestGivesTheSameBytes();
    void stylesDifferVisibly();
    void promptsDifferVisibly();
    void sizesAreExact_data();
    void sizesAreExact();
    void knowsTheStylesInEveryLanguage_data();
    void knowsTheStylesInEveryLanguage();
    void readsTheSubject_data();
    void readsTheSubject();
    void stampsTheLogoOnlyWhereAsked();
    void describesWhatWasDrawn();
    void playsThePictureWhereThePromptAsks_data();
    void playsThePictureWhereThePromptAsks();
};

void ServicePicturesTest::givesUpEncodingOnceCancelled()
{
    const QImage image = paintPicture(wish(QStringLiteral("Monet"), QStringLiteral("sea")), notCancelled);
    const std::atomic<bool> cancelled{true};
    QVERIFY(!encodePng(image, notCancelled).isEmpty());
    QVERIFY(encodePng(image, cancelled).isEmpty());
}

void ServicePicturesTest::theSameRequestGivesTheSameBytes_data()
{
    QTest::addColumn<QString>("style");
    for (const QString &style : styleNames) {
        QTest::newRow(qPrintable(style)) << style;
    }
    QTest::newRow("unknown") << QStringLiteral("unknown");
}

void ServicePicturesTest::theSameRequestGivesTheSameBytes()
{
    QFETCH(QString, style);
    const PictureRequest request = wish(style, QStringLiteral("a harbour at night"));
    const PictureResult first = draw(request);
    QVERIFY(!first.error);
    QVERIFY(first.bytes.startsWith("\x89PNG\r\n\x1a\n"));
    QCOMPARE(first.mediaType, QByteArray("image/png"));
    QCOMPARE(draw(request).bytes, first.bytes);
}

// With SERVICE_PICTURES set to a folder the pictures are left there to be looked at.
void ServicePicturesTest::stylesDifferVisibly()
{
    QVector<QImage> pictures;
    for (const QString &style : styleNames + QStringList{QStringLiteral("unknown")}) {
        pictures.append(paintPicture(wish(style, QStringLiteral("mountains by the sea at sunset")), notCancelled));
        const QString folder = qEnvironmentVariable("SERVICE_PICTURES");
        if (!folder.isEmpty()) {
            QVERIFY(pictures.last().save(QDir(folder).filePath(style + QStringLiteral(".png"))));
        }
    }
    for (int a = 0; a < pictures.size(); ++a) {
        for (int b = a + 1; b < pictures.size(); ++b) {
            QVERIFY2(distance(pictures[a], pictures[b]) > 4.0, qPrintable(QStringLiteral("%1 and %2").arg(a).arg(b)));
        }
    }
}

void ServicePicturesTest::promptsDifferVisibly()
{
    const auto paint = [](const char *prompt) {
        return paintPicture(wish(QStringLiteral("Landscape"), QString::fromUtf8(prompt)), notCancelled);
    };
    QVERIFY(distance(paint("city at night"), paint("city at noon")) > 20.0);
    QVERIFY(distance(paint("a forest in the snow"), paint("a desert")) > 10.0);
    QVERIFY(distance(paint("something"), paint("anything")) > 3.0);
}

void ServicePicturesTest::sizesAreExact_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest") << QSize(16, 16);
    QTest::newRow("wide line") << QSize(1920, 16);
    QTest::newRow("high line") << QSize(16, 1080);
    QTest::newRow("odd") << QSize(333, 251);
    QTest::newRow("5:4") << QSize(1920, 1536);
    QTest::newRow("largest") << QSize(7680, 4320);
}

void ServicePicturesTest::sizesAreExact()
{
    QFETCH(QSize, size);
    const PictureResult result = draw(wish(QStringLiteral("Flat Illustration"), QStringLiteral("a forest"), size));
    QVERIFY(!result.error);
    QImage image;
    QVERIFY(image.loadFromData(result.bytes, "PNG"));
    QCOMPARE(image.size(), size);
}

void ServicePicturesTest::knowsTheStylesInEveryLanguage_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::newRow("English") << styleNames;
    const auto row = [](const char *language, const char *names) {
        QTest::newRow(language) << QString::fromUtf8(names).split(QLatin1Char('|'));
    };
    row("simplified Chinese", "人像摄影|水墨画|水彩画|扁平插画|风景|版画|莫奈|毕加索|伦勃朗|马蒂斯");
    row("traditional Chinese", "人像攝影|水墨畫|水彩畫|扁平插畫|風景|版畫|莫內|畢卡索|林布蘭|馬諦斯");
    row("Korean", "인물 사진|수묵화|수채화|플랫 일러스트|풍경|판화|모네|피카소|렘브란트|마티스");
    row("Russian",
        "Портретное фото|Живопись тушью|Акварель|Плоская иллюстрация|Пейзаж|Гравюра|Моне|Пикассо|Рембрандт|Матисс");
}

void ServicePicturesTest::knowsTheStylesInEveryLanguage()
{
    QFETCH(QStringList, names);
    QCOMPARE(names.size(), 10);
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(static_cast<int>(styleNamed(names[i])), i + 1);
    }
    QCOMPARE(styleNamed(QStringLiteral("something else")), Style::Plain);
}

void ServicePicturesTest::readsTheSubject_data()
{
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<int>("motif");
    QTest::addColumn<int>("daytime");
    const auto row = [](const char *prompt, Motif motif, Daytime daytime) {
        QTest::newRow(prompt) << QString::fromUtf8(prompt) << static_cast<int>(motif) << static_cast<int>(daytime);
    };
    row("A harbour at night", Motif::Harbour, Daytime::Night);
    row("mountains at sunset", Motif::Mountains, Daytime::Sunset);
    row("city skyline in the morning", Motif::City, Daytime::Dawn);
    row("夜晚的海港", Motif::Harbour, Daytime::Night);
    row("日落时的雪山", Motif::Snow, Daytime::Sunset);
    row("清晨的森林", Motif::Forest, Daytime::Dawn);
}

void ServicePicturesTest::readsTheSubject()
{
    QFETCH(QString, prompt);
    QFETCH(int, motif);
    QFETCH(int, daytime);
    const Subject subject = subjectOf(prompt);
    QVERIFY(subject.motifs.testFlag(static_cast<Motif>(motif)));
    QCOMPARE(static_cast<int>(subject.daytime), daytime);
}

void ServicePicturesTest::stampsTheLogoOnlyWhereAsked()
{
    PictureRequest request = wish(QStringLiteral("Landscape"), QStringLiteral("sea"));
    const QImage plain = paintPicture(request, notCancelled);
    request.logoOpacity = 1.0;
    request.logoPosition = 3;
    QCOMPARE(paintPicture(request, notCancelled), plain);
    request.logoEnabled = true;
    const QImage stamped = paintPicture(request, notCancelled);
    const QRect corner(240, 120, 80, 60);
    QVERIFY(stamped.copy(corner) != plain.copy(corner));
    const QRect rest(0, 0, 240, 120);
    QCOMPARE(stamped.copy(rest), plain.copy(rest));
    request.logoOpacity = 0.0;
    QCOMPARE(paintPicture(request, notCancelled), plain);
}

void ServicePicturesTest::describesWhatWasDrawn()
{
    const QString english = draw(wish(QStringLiteral("Monet"), QStringLiteral("a harbour at night"))).description;
    QVERIFY2(english.contains(QStringLiteral("harbour")) && english.contains(QStringLiteral("night")),
             qPrintable(english));
    QVERIFY(english.contains(QStringLiteral("Monet")) && english.contains(QStringLiteral("without a picture model")));
    const QString chinese = draw(wish(QStringLiteral("莫奈"), QStringLiteral("夜晚的海港"))).description;
    QVERIFY2(chinese.contains(QStringLiteral("海港")) && chinese.contains(QStringLiteral("夜晚")), qPrintable(chinese));
}

void ServicePicturesTest::playsThePictureWhereThePromptAsks_data()
{
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QByteArray>("params");
    const auto row = [](const char *prompt, const char *params) {
        QTest::newRow(prompt) << QString::fromUtf8(prompt) << QByteArray(params);
    };
    row("a harbour at night, play it on layer 2", "{\"bPlay\":true,\"layerId\":2}");
    row("a harbour and play the picture on the second layer at half volume",
        "{\"bPlay\":true,\"layerId\":2,\"volume\":0.5}");
    row("夜晚的海港，播放到第二层", "{\"bPlay\":true,\"layerId\":2}");
    row("画一个海港并在第二层播放", "{\"bPlay\":true,\"layerId\":2}");
    row("children play in the snow", "");
    row("a harbour, boats and people who play on the beach", "");
    row("a harbour at night, don't play it on layer 2", "");
    row("a harbour at night, play it on layer 0", "");
}

void ServicePicturesTest::playsThePictureWhereThePromptAsks()
{
    QFETCH(QString, prompt);
    QFETCH(QByteArray, params);
    const QJsonArray commands = draw(wish(QString(), prompt, QSize(64, 36))).agentCommands;
    QCOMPARE(commands.size(), params.isEmpty() ? 0 : 1);
    if (!params.isEmpty()) {
        QCOMPARE(commands[0][QLatin1String("cmdType")].toInt(-1), 0);
        QCOMPARE(commands[0][QLatin1String("params")].toObject(), QJsonDocument::fromJson(params).object());
    }
}

QTEST_GUILESS_MAIN(ServicePicturesTest)
#include "tst_servicepictures.moc"
