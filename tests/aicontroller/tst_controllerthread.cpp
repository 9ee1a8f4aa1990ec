#include "cachefolder.h"
#include "controllerfixture.h"
#include "picturebytes.h"
#include "threadedcontroller.h"

#include <QTest>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

} // namespace

/// A controller that lives in a thread of its own, with its poll timer running there.
class ControllerThreadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questionIsAnsweredThere();
    void pictureIsAnnouncedThere();
    void unreachablePictureIsAnnouncedThere();
    void downloadIsAnnouncedThere();
    void commandsAreAnnouncedThere();
    void timeOutIsAnnouncedThere();
    void clearedFromOutside();
    void destroyedWithRequestsOnTheirWay();
    void secondTimerReplacesTheFirst();
};

namespace {

/// Everything is set while the controller is still in the test's thread; then it goes.
struct Scene {
    Scene()
        : heard(home.controller())
    {
        home->createTimer();
        home->setDomain(server.url());
        home->setToken(QStringLiteral("secret"));
        home.moveAway();
        home->setSingleTickTime(0);
    }

    QString complaints() const { return log.complaints().join(QLatin1Char('\n')); }
    QString pictureUrl() const { return server.url() + QString::fromLatin1(picturePath); }

    LogCatcher log;
    CacheFolder cache;
    ScriptedServer server;
    ThreadedController home;
    ControllerSignals heard;
};

} // namespace

void ControllerThreadTest::questionIsAnsweredThere()
{
    Scene scene;
    scene.server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    scene.server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    scene.server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyText());
    scene.home->generateText(QStringLiteral("question"));
    QVERIFY(scene.heard.generateTextFinished.blockFor(1));
    QVERIFY(scene.heard.generateTextFinished.emission(0).thread == scene.home.threadId());
    QVERIFY(scene.home.threadId() != std::this_thread::get_id());
    bool isStopped = false;
    scene.home.inThread([&](auto &d) { isStopped = !d.pQueryTimer->isActive(); });
    QVERIFY(isStopped);
    QCOMPARE(scene.server.requests().first().header("token").value_or("none"), QByteArray("secret"));
    QCOMPARE(scene.server.leftovers(), QStringList());
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::pictureIsAnnouncedThere()
{
    Scene scene;
    scene.server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    scene.server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyPicture(scene.pictureUrl()));
    scene.server.expect("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    scene.home->generatePicture(ControllerFixture::pictureInfo());
    QVERIFY(scene.heard.generatePictureFinished.blockFor(1));
    QVERIFY(scene.heard.generatePictureFinished.emission(0).thread == scene.home.threadId());
    QCOMPARE(scene.heard.generatePictureFinished.argument<2>(0).pixmap.size(), QSize(4, 3));
    QCOMPARE(scene.server.leftovers(), QStringList());
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::unreachablePictureIsAnnouncedThere()
{
    Scene scene;
    const ExpectedLog failure(scene.log, QStringLiteral("errorcode 203"));
    scene.server.expect("GET", picturePath, ScriptedAnswer::status(404));
    PicturedGeneratedPack pack;
    pack.source.url = scene.pictureUrl().toStdString();
    scene.home->queryImageData(pack);
    QVERIFY(scene.heard.generatePictureFinished.blockFor(1));
    QVERIFY(scene.heard.generatePictureFinished.emission(0).thread == scene.home.threadId());
    scene.home.inThread([](auto &) {}); // the error's line comes behind the signal
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::downloadIsAnnouncedThere()
{
    Scene scene;
    scene.server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    scene.home->toDownloadPicture(scene.pictureUrl());
    QVERIFY(scene.heard.downloadPictureFinished.blockFor(1));
    QVERIFY(scene.heard.downloadPictureFinished.emission(0).thread == scene.home.threadId());
    QCOMPARE(CacheFolder::contentOf(scene.cache.pathOf(1)), QByteArray("picture"));
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::commandsAreAnnouncedThere()
{
    Scene scene;
    scene.server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    scene.server.expect("POST", ControllerFixture::resultPath(),
                        ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":["x"],"agentCmds":[{"cmdType":4}]}})"));
    scene.home->generateText(QStringLiteral("question"));
    QVERIFY(scene.heard.agentCmds.blockFor(1));
    QVERIFY(scene.heard.agentCmds.emission(0).thread == scene.home.threadId());
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::timeOutIsAnnouncedThere()
{
    Scene scene;
    scene.home->setTimeout(0);
    scene.home->startTimer();
    QVERIFY(scene.heard.requestTimeout.blockFor(1));
    QVERIFY(scene.heard.requestTimeout.emission(0).thread == scene.home.threadId());
    bool isStopped = false;
    scene.home.inThread([&](auto &d) { isStopped = !d.pQueryTimer->isActive(); });
    QVERIFY(isStopped);
    QCOMPARE(scene.heard.summary(), QStringLiteral("requestTimeout:1"));
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::clearedFromOutside()
{
    Scene scene;
    scene.server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted().held());
    scene.home->generateText(QStringLiteral("question"));
    QVERIFY(eventually([&] { return scene.server.heldCount() == 1; }));
    scene.home->clear();
    QVERIFY(eventually([&] { return scene.server.connectionsOpen() == 0; }));
    const ExpectedLog refused(scene.log, QStringLiteral("has been cleared"));
    scene.home->generateText(QStringLiteral("another"));
    scene.home.inThread([](auto &) {});
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(scene.server.requestCount(), 1);
    QCOMPARE(scene.complaints(), QString());
}

void ControllerThreadTest::destroyedWithRequestsOnTheirWay()
{
    LogCatcher log;
    ScriptedServer server;
    server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted().held());
    server.expect("GET", picturePath, ScriptedAnswer::bytes("picture").held());
    auto home = std::make_unique<ThreadedController>();
    const ControllerSignals heard(home->controller());
    home->controller().createTimer();
    home->controller().setDomain(server.url());
    home->moveAway();
    home->controller().generateText(QStringLiteral("question"));
    home->controller().downloadPicture(server.url() + QString::fromLatin1(picturePath));
    QVERIFY(eventually([&] { return server.heldCount() == 2; }));
    home.reset();
    QVERIFY(eventually([&] { return server.connectionsOpen() == 0; }));
    QCOMPARE(heard.summary(), QString());
    QCOMPARE(log.complaints(), QStringList());
}

void ControllerThreadTest::secondTimerReplacesTheFirst()
{
    Scene scene;
    scene.home->startTimer();
    scene.home->createTimer();
    int timers = 0;
    int interval = 0;
    bool isActive = true;
    scene.home.inThread([&](auto &d) {
        timers = d.template findChildren<QTimer *>().size();
        interval = d.pQueryTimer->interval();
        isActive = d.pQueryTimer->isActive();
    });
    QCOMPARE(timers, 1);
    QCOMPARE(interval, 5000);
    QVERIFY(!isActive);
    QCOMPARE(scene.complaints(), QString());
}

QTEST_MAIN(ControllerThreadTest)

#include "tst_controllerthread.moc"
