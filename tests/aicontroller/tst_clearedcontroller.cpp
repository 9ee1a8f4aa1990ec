#include "controllertest.h"

namespace {

QString clearedText()
{
    return QStringLiteral("has been cleared");
}

struct Operation {
    const char *name;
    void (*use)(ControllerFixture &);
};

QString anyUrl(const ControllerFixture &f)
{
    return f.server.url() + QStringLiteral("/pictures/1");
}

PicturedGeneratedPack anyPack(const ControllerFixture &f)
{
    PicturedGeneratedPack pack;
    pack.source.url = anyUrl(f).toStdString();
    return pack;
}

// What would send a request.
const Operation requests[] = {
    {"generateText", [](ControllerFixture &f) { f.controller.generateText(QStringLiteral("q")); }},
    {"textToGenerateText", [](ControllerFixture &f) { f.controller.textToGenerateText(QStringLiteral("q")); }},
    {"generatePicture", [](ControllerFixture &f) { f.controller.generatePicture(ControllerFixture::pictureInfo()); }},
    {"textToGeneratePicture",
     [](ControllerFixture &f) { f.controller.textToGeneratePicture(ControllerFixture::pictureInfo()); }},
    {"downloadPicture", [](ControllerFixture &f) { f.controller.downloadPicture(anyUrl(f)); }},
    {"toDownloadPicture", [](ControllerFixture &f) { f.controller.toDownloadPicture(anyUrl(f)); }},
    {"queryImageData", [](ControllerFixture &f) { f.controller.queryImageData(anyPack(f)); }},
    {"generatePictureFinished", [](ControllerFixture &f) { f.controller.generatePictureFinished(anyPack(f)); }},
};

} // namespace

/// What a controller does after clear().
class ClearedControllerTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void requestsAreRefusedWithAWarning_data();
    void requestsAreRefusedWithAWarning();
    void ticksAskForNothing();
    void settingsDoNoHarm();
    void timerMadeTwiceStillTicksOnce();
};

void ClearedControllerTest::requestsAreRefusedWithAWarning_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < static_cast<int>(std::size(requests)); ++index)
        QTest::newRow(requests[index].name) << index;
}

void ClearedControllerTest::requestsAreRefusedWithAWarning()
{
    QFETCH(int, index);
    f->controller.clear();
    settle();
    {
        const ExpectedLog refused(f->log, clearedText());
        requests[index].use(*f);
        settle();
        QCOMPARE(refused.seen(), 1);
    }
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->d.historyArray.isEmpty());
    QVERIFY(f->d.pendingImagePack.source.url.empty());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->server.requestCount(), 0);
}

void ClearedControllerTest::ticksAskForNothing()
{
    QVERIFY(f->askText());
    f->controller.clear();
    settle();
    f->controller.startTimer();
    f->ticks(20);
    QCOMPARE(f->server.requestCount(), 1);
    QCOMPARE(f->signalled.summary(), QString());
}

void ClearedControllerTest::settingsDoNoHarm()
{
    f->controller.clear();
    settle();
    f->controller.setDomain(QStringLiteral("http://127.0.0.1:1"));
    f->controller.updateHeaderInfo({"a", "b", "c"});
    f->controller.setTimeout(1);
    f->controller.createTimer();
    f->controller.setSingleTickTime(1);
    f->controller.setMediaLibAllResources({{"1", "one"}});
    f->controller.activeDeepseekModel(true);
    f->controller.activeOnlineSearch(true);
    f->controller.stopGenerate();
    f->controller.clearHistoryRecord();
    f->controller.clearCathe();
    QCOMPARE(f->signalled.summary(), QString());
    QCOMPARE(f->server.requestCount(), 0);
}

void ClearedControllerTest::timerMadeTwiceStillTicksOnce()
{
    f->controller.createTimer();
    f->controller.createTimer();
    QCOMPARE(f->d.findChildren<QTimer *>().size(), 1);
    f->controller.setTimeout(0);
    f->controller.setSingleTickTime(0);
    f->controller.startTimer();
    QVERIFY(f->signalled.requestTimeout.waitFor(1));
    settle();
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestTimeout:1"));
    QVERIFY(!f->isTimerActive());
}

QTEST_GUILESS_MAIN(ClearedControllerTest)

#include "tst_clearedcontroller.moc"
