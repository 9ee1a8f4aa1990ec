#include "aicontroller/picturedecoder.h"
#include "picturebytes.h"
#include "processusage.h"
#include "support/waiting.h"

#include <QTest>

#include <memory>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

double secondsOfOthers()
{
    return processusage::processSeconds() - processusage::threadSeconds();
}

} // namespace

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

// The largest picture that is taken at all, whole once and then given up on the way. What counts is the work that was
// done when the end had come.
void PictureDecoderTest::endDoesNotWaitForAPicture()
{
    const QByteArray large = picturebytes::blackAndWhitePng({11'500, 11'500});
    auto decoder = std::make_unique<PictureDecoder>();
    int done = 0;
    const double before = secondsOfOthers();
    decoder->decode(large, [&](const QImage &) { ++done; });
    QVERIFY(eventually([&] { return done == 1; }));
    const double whole = secondsOfOthers() - before;

    const double begin = secondsOfOthers();
    decoder->decode(large, [&](const QImage &) { ++done; });
    QVERIFY(eventually([&] { return secondsOfOthers() - begin > whole / 10; }));
    decoder.reset();
    const double used = secondsOfOthers() - begin;
    QVERIFY2(used < whole * 0.7, qPrintable(QStringLiteral("%1 of %2").arg(used).arg(whole)));
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
