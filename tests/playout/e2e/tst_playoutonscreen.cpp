#include "../../service/serviceprocess.h"
#include "playoutonscreen.h"
#include "support/waiting.h"
#include "virtualscreen.h"

#include <QSet>
#include <QTest>

#include <csignal>
#include <memory>

using namespace tavro::testsupport;

/// A user at a real window: the mouse and the keys come from the X server, the answers from the real service, and what
/// is on the screen is what the program's controls are drawn like.
class PlayoutOnScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void typedQuestionIsAnsweredAndCarriedOut();
    void pictureIsLookedAtAndClosedByKey();

private:
    bool isSeenAsDrawn(const QRect &place, const QString &drawnFile) const;
    int colorsAt(const QRect &place) const;

    VirtualScreen screen;
    ServiceProcess service;
    std::unique_ptr<PlayoutOnScreen> playout;
};

namespace {

constexpr QSize screenSize(1920, 1080);

// The programs have a minute for each step, on a machine with much else to do too.
const char *const questionScript = "size 1600 900\n"
                                   "tell askEdit\n"
                                   "wait 60 focused askEdit\n"
                                   "tell askEdit\n"
                                   "wait 60 text askEdit at half volume\n"
                                   "tell askEdit\n"
                                   "wait 60 text layer2State PLAYING\n"
                                   "wait 60 text layer2Volume 50 %\n"
                                   "wait 60 visible sendMsg\n"
                                   "tell textBrowser\n"
                                   "tell layer2Media\n"
                                   "wait 60 text statusService answering\n"
                                   "tell askEdit\n"
                                   "screenshot drawn.png\n"
                                   "tell itemsWidget\n"
                                   "wait 60 text askEdit thanks\n"
                                   "quit\n";

const char *const pictureScript = "size 1600 900\n"
                                  "tell generateImage\n"
                                  "wait 60 visible styleSelect\n"
                                  "tell askEdit\n"
                                  "wait 60 focused askEdit\n"
                                  "tell askEdit\n"
                                  "wait 60 text askEdit in the fog\n"
                                  "tell sendMsg\n"
                                  "wait 60 visible PixmapCellLabel\n"
                                  "wait 60 visible sendMsg\n"
                                  "tell PixmapCellLabel\n"
                                  "wait 60 visible imageButtonFrame\n"
                                  "tell magnifierButton\n"
                                  "wait 60 focused pictureViewer\n"
                                  "tell pictureViewer\n"
                                  "tell picture\n"
                                  "wait 60 hidden pictureViewer\n"
                                  "quit\n";

} // namespace

// Fails with what the program said where it told nothing.
#define TOLD(control) QVERIFY2(!(control).place.isNull(), qPrintable(playout->complaints()))

void PlayoutOnScreenTest::initTestCase()
{
    QVERIFY(screen.start(screenSize));
    QVERIFY(service.start({QStringLiteral("--log-level"), QStringLiteral("warning")}));
}

void PlayoutOnScreenTest::cleanupTestCase()
{
    service.signal(SIGTERM);
    QCOMPARE(service.exitCode(), 0);
}

void PlayoutOnScreenTest::init()
{
    playout = std::make_unique<PlayoutOnScreen>(screen);
}

void PlayoutOnScreenTest::cleanup()
{
    playout.reset();
}

bool PlayoutOnScreenTest::isSeenAsDrawn(const QRect &place, const QString &drawnFile) const
{
    const QImage drawn = QImage(drawnFile).copy(place).convertToFormat(QImage::Format_RGB32);
    return drawn.size() == place.size() && eventually([&] { return screen.picture().copy(place) == drawn; });
}

int PlayoutOnScreenTest::colorsAt(const QRect &place) const
{
    const QImage seen = screen.picture().copy(place);
    QSet<QRgb> colors;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x)
            colors.insert(seen.pixel(x, y));
    }
    return colors.size();
}

void PlayoutOnScreenTest::typedQuestionIsAnsweredAndCarriedOut()
{
    const QString question = QStringLiteral("play the harbour clip on layer 2 at half volume");
    QVERIFY(playout->start(service.url(QString()).toString(), QLatin1String(questionScript)));
    Control edit = playout->nextControl();
    TOLD(edit);
    QVERIFY(screen.click(edit.middle()));
    edit = playout->nextControl();
    TOLD(edit);
    QVERIFY(screen.type(question));
    edit = playout->nextControl();
    TOLD(edit);
    QCOMPARE(edit.text, question);
    QVERIFY(screen.press(QStringLiteral("Return")));

    const Control answer = playout->nextControl();
    TOLD(answer);
    QVERIFY2(answer.text.contains(QStringLiteral("harbour clip")), qPrintable(answer.text));
    QVERIFY(playout->nextControl().text.contains(QStringLiteral("harbour clip")));
    edit = playout->nextControl();
    TOLD(edit);
    QCOMPARE(edit.text, QString());
    QVERIFY(edit.isEnabled);
    const Control conversation = playout->nextControl();
    TOLD(conversation);
    QVERIFY(QRect(QPoint(), QSize(1600, 900)).contains(conversation.place));
    QVERIFY(conversation.place.contains(answer.place));
    QVERIFY(isSeenAsDrawn(conversation.place, playout->file(QStringLiteral("drawn.png"))));
    // Smooth letters have many shades, and an empty box has its background only.
    for (const QRect &place : {answer.place, edit.place, conversation.place})
        QVERIFY2(colorsAt(place) > 10, qPrintable(QString::number(colorsAt(place))));

    QVERIFY(screen.type(QStringLiteral("thanks")));
    const int exitCode = playout->exitCode();
    QVERIFY2(exitCode == 0, qPrintable(playout->complaints()));
}

void PlayoutOnScreenTest::pictureIsLookedAtAndClosedByKey()
{
    QVERIFY(playout->start(service.url(QString()).toString(), QLatin1String(pictureScript)));
    for (int control = 0; control < 2; ++control) {
        const Control clicked = playout->nextControl();
        TOLD(clicked);
        QVERIFY(screen.click(clicked.middle()));
    }
    TOLD(playout->nextControl());
    QVERIFY(screen.type(QStringLiteral("a lighthouse in the fog")));
    const Control send = playout->nextControl();
    TOLD(send);
    QVERIFY(send.isEnabled);
    QVERIFY(screen.click(send.middle()));

    const Control thumbnail = playout->nextControl();
    TOLD(thumbnail);
    QCOMPARE(thumbnail.place.size(), QSize(163, 102));
    QVERIFY(eventually([&] { return colorsAt(thumbnail.place) > 50; }));
    QVERIFY(screen.point(thumbnail.middle()));
    const Control look = playout->nextControl();
    TOLD(look);
    QVERIFY(screen.click(look.middle()));

    const Control viewer = playout->nextControl();
    TOLD(viewer);
    QCOMPARE(viewer.place, QRect(QPoint(), screenSize));
    const Control picture = playout->nextControl();
    TOLD(picture);
    QVERIFY(eventually([&] { return colorsAt(picture.place.adjusted(200, 200, -200, -200)) > 100; }));
    QVERIFY(screen.press(QStringLiteral("Escape")));
    const int exitCode = playout->exitCode();
    QVERIFY2(exitCode == 0, qPrintable(playout->complaints()));
}

QTEST_GUILESS_MAIN(PlayoutOnScreenTest)
#include "tst_playoutonscreen.moc"
