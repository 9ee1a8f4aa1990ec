#include "aicontroller/picturedecoder.h"
#include "picturebytes.h"
#include "processusage.h"
#include "support/waiting.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <memory>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class PictureDecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resultsKeepTheOrder();
    void endDoesNotWaitForAPicture();
    void nothingComesAfterTheEnd();
};

void PictureDecoderTest::resultsKeepTheOrder()
{
    PictureDecoder decoder;
    QVector<int> widths;
    for (const QByteArray &bytes : {picturebytes::blackAndWhitePng({3000, 3000}), QByteArray("no picture"),
                                    QByteArray(), picturebytes::encoded("png", {5, 5})})
        decoder.decode(bytes, [&](const QImage &picture) { widths.append(picture.width()); });
    QCOMPARE(widths, QVector<int>());
    QVERIFY(eventually([&] { return widths.size() == 4; }));
    QCOMPARE(widths, QVector<int>({3000, 0, 0, 5}));
    decoder.decode({}, [&](const QImage &picture) { widths.append(picture.width()); });
    QCOMPARE(widths.size(), 5);
}

// The largest picture that is taken at all, whole once and then given up on the way.
void PictureDecoderTest::endDoesNotWaitForAPicture()
{
    const QByteArray large = picturebytes::blackAndWhitePng({11'500, 11'500});
    auto decoder = std::make_unique<PictureDecoder>();
    int done = 0;
    QElapsedTimer timer;
    timer.start();
    decoder->decode(large, [&](const QImage &) { ++done; });
    QVERIFY(eventually([&] { return done == 1; }));
    const qint64 whole = timer.restart();

    const double used = processusage::processSeconds();
    const double idle = processusage::threadSeconds();
    decoder->decode(large, [&](const QImage &) { ++done; });
    QVERIFY(eventually([&] {
        const double others = processusage::processSeconds() - used - (processusage::threadSeconds() - idle);
        return others > static_cast<double>(whole) / 1000 / 20;
    }));
    timer.restart();
    decoder.reset();
    QVERIFY2(timer.elapsed() < qMax<qint64>(whole / 2, 150), qPrintable(QString::number(timer.elapsed())));
    settle();
    QCOMPARE(done, 1);
}

void PictureDecoderTest::nothingComesAfterTheEnd()
{
    int done = 0;
    for (int round = 0; round < 50; ++round) {
        PictureDecoder decoder;
        for (int picture = 0; picture < 3; ++picture)
            decoder.decode(picturebytes::encoded("png"), [&](const QImage &) { ++done; });
    }
    settle();
    QCOMPARE(done, 0);
}

QTEST_MAIN(PictureDecoderTest)

#include "tst_picturedecoder.moc"
